#include "widgets/TextLook.h"

#include "look/DOS.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

void setForeground(QWidget* widget, QPalette::ColorRole role, const QColor& colour) {
    QPalette colours = widget->palette();
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        colours.setColor(group, role, colour);
    widget->setPalette(colours);
}

void styleLabel(QLabel* label, qreal size) {
    label->setTextFormat(Qt::PlainText); // film titles and shop names are text, never markup
    label->setFont(DOS::font(size));
    setForeground(label, QPalette::WindowText, DOS::text());
    label->setTextInteractionFlags(Qt::NoTextInteraction);
}

bool isTextView(QWidget* widget) {
    return qobject_cast<QLineEdit*>(widget) != nullptr || qobject_cast<QPlainTextEdit*>(widget) != nullptr ||
           qobject_cast<QTextEdit*>(widget) != nullptr;
}
