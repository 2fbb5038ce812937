#include "look/DOSField.h"

#include "look/DOS.h"
#include "look/DOSCaret.h"
#include "look/DOSStyle.h"

#include <QEvent>
#include <QPainter>

DOSField::DOSField(QWidget* parent) : DOSField(QString(), parent) {}

DOSField::DOSField(const QString& text, QWidget* parent) : QLineEdit(text, parent) {
    m_caret = DOSCaret::installOn(this);
    setTextMargins(4, 2, 4, 2);
    setFont(DOS::font(16));
    keepHardEdges();
}

void DOSField::setDrawsDOSBorder(bool draws) {
    m_drawsDOSBorder = draws;
    update();
}

void DOSField::keepHardEdges() {
    QFont current = font();
    if (current.styleStrategy() & QFont::NoAntialias)
        return;
    current.setStyleStrategy(QFont::StyleStrategy(current.styleStrategy() | QFont::NoAntialias));
    setFont(current);
}

void DOSField::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    // Callers set fonts freely (usually DOS::font); the text must stay hard-edged.
    if (event->type() == QEvent::FontChange)
        keepHardEdges();
}

void DOSField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, false);
    m_caret->paint(painter);
    if (!m_drawsDOSBorder)
        return;
    painter.setPen(QPen(DOS::border(), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
