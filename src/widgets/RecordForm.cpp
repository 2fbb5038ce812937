#include "widgets/RecordForm.h"

#include "look/DOS.h"
#include "look/DOSField.h"
#include "widgets/TextLook.h"
#include "widgets/WrappingSynopsisView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

constexpr int captionWidth = 150;
constexpr int fieldHeight = 42;
constexpr int longFieldHeight = 120;

QLabel* caption(const QString& text) {
    auto* made = new QLabel(text);
    styleLabel(made, 12);
    made->setWordWrap(true); // two lines at most: the caption's height follows the field's
    made->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    made->setFixedWidth(captionWidth);
    made->setMaximumHeight(2 * made->fontMetrics().lineSpacing() + 4);
    made->setAutoFillBackground(true);
    QPalette colours = made->palette();
    colours.setColor(QPalette::Window, DOS::ink());
    made->setPalette(colours);
    return made;
}

void colourText(QWidget* field) {
    QPalette colours = field->palette();
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        colours.setColor(group, QPalette::Text, DOS::text());
        colours.setColor(group, QPalette::Base, DOS::ink());
    }
    field->setPalette(colours);
}

} // namespace

RecordForm::RecordForm(QWidget* parent) : QWidget(parent), m_rows(new QVBoxLayout(this)) {
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setSpacing(14);
    m_rows->setAlignment(Qt::AlignTop);
}

QWidget* RecordForm::row(const QString& label, QWidget* field, Qt::Alignment alignment) {
    auto* line = new QWidget;
    auto* layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(caption(label), 0, alignment);
    layout->addWidget(field, 1);
    m_rows->addWidget(line);
    return line;
}

DOSField* RecordForm::add(const QString& key, const QString& label, const QString& value, bool editable) {
    auto* field = new DOSField(value);
    field->setFont(DOS::font(16));
    colourText(field);
    field->setFrame(false); // DOSField draws its own one-pixel frame
    field->setReadOnly(!editable);
    field->setFixedHeight(fieldHeight);
    field->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    field->setCursorPosition(0);
    row(label, field, Qt::AlignVCenter);
    m_fields.insert(key, field);
    m_views.append(field);
    if (editable)
        m_controls.append(field);
    return field;
}

WrappingSynopsisView* RecordForm::addLong(const QString& key, const QString& label, const QString& value) {
    auto* text = new WrappingSynopsisView;
    text->setFixedHeight(longFieldHeight);
    text->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    text->setFrameShape(QFrame::NoFrame);
    text->setWordWrapMode(QTextOption::WordWrap);
    text->setPlainText(value);
    row(label, text, Qt::AlignTop);
    m_longFields.insert(key, text);
    m_views.append(text);
    m_controls.append(text);
    return text;
}

QString RecordForm::value(const QString& key) const {
    if (const DOSField* field = m_fields.value(key))
        return field->text().trimmed();
    if (const WrappingSynopsisView* text = m_longFields.value(key))
        return text->toPlainText().trimmed();
    return {};
}
