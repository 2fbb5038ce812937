#include "widgets/StyledDialog.h"

#include "look/DOS.h"
#include "look/DOSButton.h"
#include "widgets/FocusRing.h"
#include "widgets/WrappingSynopsisView.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QStyle>
#include <QTextEdit>
#include <QVBoxLayout>
#include <algorithm>

namespace {

constexpr int iconSize = 64;

void setTextColour(QWidget* widget, const QColor& colour) {
    QPalette colours = widget->palette();
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        colours.setColor(group, QPalette::WindowText, colour);
        colours.setColor(group, QPalette::Text, colour);
    }
    widget->setPalette(colours);
}

// Fields, labels and pop-ups of the accessory take the pixel font and the green
// text; tables and text views keep the look they were made with.
void restyle(QWidget* view) {
    for (QObject* child : view->children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget == nullptr || qobject_cast<QAbstractItemView*>(widget) != nullptr ||
            qobject_cast<QPlainTextEdit*>(widget) != nullptr || qobject_cast<QTextEdit*>(widget) != nullptr)
            continue;
        if (auto* field = qobject_cast<QLineEdit*>(widget)) {
            field->setFont(DOS::font(field->isReadOnly() ? 14 : 16));
            setTextColour(field, DOS::text());
            if (!field->isReadOnly()) {
                QPalette colours = field->palette();
                for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
                    colours.setColor(group, QPalette::Base, DOS::blue());
                field->setPalette(colours);
                field->setAutoFillBackground(true);
            }
            continue;
        }
        if (auto* label = qobject_cast<QLabel*>(widget)) {
            label->setFont(DOS::font(14));
            setTextColour(label, DOS::text());
        } else if (auto* popup = qobject_cast<QComboBox*>(widget)) {
            popup->setFont(DOS::font(14));
            continue;
        }
        restyle(widget);
    }
}

// Tables, editable fields and pop-ups in depth-first order.
void collectRing(QWidget* view, QList<QWidget*>& ring) {
    for (QObject* child : view->children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget == nullptr)
            continue;
        if (qobject_cast<QAbstractItemView*>(widget) != nullptr || qobject_cast<QComboBox*>(widget) != nullptr) {
            ring.append(widget);
            continue;
        }
        if (auto* field = qobject_cast<QLineEdit*>(widget)) {
            if (!field->isReadOnly())
                ring.append(field);
            continue;
        }
        collectRing(widget, ring);
    }
}

bool isEditingMultilineText(QWidget* widget) {
    if (auto* plain = qobject_cast<QPlainTextEdit*>(widget))
        return !plain->isReadOnly();
    if (auto* rich = qobject_cast<QTextEdit*>(widget))
        return !rich->isReadOnly();
    return false;
}

} // namespace

StyledDialog::StyledDialog(ModalAlert alert, QWidget* parent)
    : QDialog(parent), m_title(alert.title), m_accessory(alert.accessory.get()), m_initialFocus(alert.initialFocus),
      m_escapeButton(alert.escapeButton) {
    setWindowTitle(m_title.isEmpty() ? QStringLiteral("CINEFITA") : m_title);
    setModal(true);
    setResult(abortAnswer);

    QPalette colours = palette();
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        colours.setColor(group, QPalette::Window, DOS::blue());
        colours.setColor(group, QPalette::WindowText, DOS::text());
    }
    setPalette(colours);

    auto* outer = new QHBoxLayout(this);
    outer->setContentsMargins(24, 24, 24, 20);
    outer->setSpacing(20);
    outer->setSizeConstraint(QLayout::SetFixedSize);

    m_icon = new QLabel;
    m_icon->setFixedSize(iconSize, iconSize);
    m_icon->setAlignment(Qt::AlignCenter);
    if (const std::optional<QImage> icon = DOS::dialogIcon())
        m_icon->setPixmap(QPixmap::fromImage(DOS::fittedStrokes(*icon, iconSize)));
    else
        m_icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(iconSize, iconSize));
    outer->addWidget(m_icon, 0, Qt::AlignTop);

    auto* column = new QVBoxLayout;
    column->setSpacing(14);
    outer->addLayout(column);

    auto* heading = new QLabel(m_title);
    heading->setTextFormat(Qt::PlainText); // film titles and shop names are text, never markup
    heading->setWordWrap(true);
    heading->setMaximumWidth(500);
    heading->setFont(DOS::font(14));
    setTextColour(heading, DOS::text());
    column->addWidget(heading);

    if (!alert.text.isEmpty()) { // only when the text was not moved into the box
        auto* body = new QLabel(alert.text);
        body->setTextFormat(Qt::PlainText);
        body->setWordWrap(true);
        body->setMaximumWidth(500);
        body->setFont(DOS::font(14));
        setTextColour(body, DOS::text());
        column->addWidget(body);
    }
    if (m_accessory != nullptr) {
        column->addWidget(alert.accessory.release());
        restyle(m_accessory);
        collectRing(m_accessory, m_ring);
    }

    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    row->addStretch(1);
    const QStringList titles = alert.buttons.isEmpty() ? QStringList{QStringLiteral("OK")} : alert.buttons;
    for (int i = 0; i < titles.size(); ++i) {
        auto* button = new DOSButton(titles[i]);
        button->setFont(DOS::font(14));
        button->setFocusPolicy(Qt::StrongFocus);
        button->setAutoDefault(false);
        button->setTag(i);
        button->setFixedHeight(34);
        button->setMinimumWidth(std::max(110, button->fontMetrics().horizontalAdvance(titles[i]) + 32));
        connect(button, &QPushButton::clicked, this, [this, button] { finish(button); });
        row->addWidget(button);
        m_buttons.append(button);
        m_ring.append(button);
    }
    column->addSpacing(4);
    column->addLayout(row);
}

WrappingSynopsisView* StyledDialog::textBox() const {
    return m_accessory != nullptr ? m_accessory->findChild<WrappingSynopsisView*>() : nullptr;
}

int StyledDialog::run() {
    // Whatever ends the run, the monitor goes and the dialog leaves the screen.
    struct Teardown {
        StyledDialog* dialog;
        ~Teardown() {
            qApp->removeEventFilter(dialog);
            if (QWidget* focused = dialog->focusWidget())
                focused->clearFocus();
            dialog->hide();
        }
    } teardown{this};
    qApp->installEventFilter(this);
    const int answer = exec();
    // A run ended from outside (the application quitting) answers like an abort.
    return answer >= response(0) && answer < response(int(m_buttons.size())) ? answer : abortAnswer;
}

void StyledDialog::finish(DOSButton* button) {
    if (QWidget* focused = focusWidget())
        focused->clearFocus();
    done(response(button->tag()));
}

void StyledDialog::reject() {
    done(abortAnswer);
}

bool StyledDialog::isRewindQuestion() const {
    return m_title.contains(QStringLiteral("REBOBINADA"));
}

bool StyledDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || widget->window() != this || QApplication::activeModalWidget() != this)
        return false;
    // The press travels up from the focus widget; answer it once, where it starts.
    if (widget != (focusWidget() != nullptr ? focusWidget() : this))
        return false;
    auto* key = static_cast<QKeyEvent*>(event);

    if (isRewindQuestion()) {
        const QString typed = key->text().toLower();
        if (typed == QLatin1String("s") || typed == QLatin1String("n")) {
            done(response(typed == QLatin1String("s") ? 0 : 1));
            return true;
        }
    }
    if (key->key() == Qt::Key_Escape) {
        if (m_escapeButton)
            done(response(*m_escapeButton));
        else
            done(isRewindQuestion() || m_buttons.size() < 2 ? abortAnswer : response(1));
        return true;
    }
    if (FocusRing::handleKeyboard(key, m_ring, this))
        return true;
    // Return is the first button's key equivalent, except where it starts a new line.
    const bool commandKeys = key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && !commandKeys &&
        !isEditingMultilineText(focusWidget()) && !m_buttons.isEmpty()) {
        m_buttons.first()->click();
        return true;
    }
    return false;
}

void StyledDialog::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), DOS::blue());
    painter.setPen(QPen(DOS::border(), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
}

void StyledDialog::closeEvent(QCloseEvent* event) {
    if (QApplication::activeModalWidget() != this) {
        QDialog::closeEvent(event);
        return;
    }
    event->ignore();
    done(abortAnswer);
}

void StyledDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (m_initialFocus != nullptr)
        m_initialFocus->setFocus(Qt::OtherFocusReason);
}
