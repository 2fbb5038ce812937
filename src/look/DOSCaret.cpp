#include "look/DOSCaret.h"

#include "look/DOS.h"
#include "look/DOSStyle.h"

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QPainter>
#include <QTimer>

DOSCaret::DOSCaret(QLineEdit* field) : QObject(field), m_field(field), m_timer(new QTimer(this)) {
    field->setProperty(propertyName(), true);
    field->installEventFilter(this);
    connect(m_timer, &QTimer::timeout, this, &DOSCaret::blink);
    // Any movement shows the caret at once and starts a new blink period, as Qt does.
    connect(field, &QLineEdit::cursorPositionChanged, this, &DOSCaret::restartBlink);
    connect(field, &QLineEdit::textChanged, this, &DOSCaret::restartBlink);
    connect(field, &QLineEdit::selectionChanged, this, &DOSCaret::restartBlink);
}

QRect DOSCaret::rect() const {
    // QLineEdit's cursor rectangle (public as the input method's) starts 5 pixels
    // before the insertion point.
    const QRect around = m_field->inputMethodQuery(Qt::ImCursorRectangle).toRect();
    return QRect(around.x() + 5, around.y(), width, around.height());
}

bool DOSCaret::isShown() const {
    return m_phaseOn && m_field->hasFocus() && !m_field->isReadOnly() && !m_field->hasSelectedText();
}

void DOSCaret::paint(QPainter& painter) const {
    if (!isShown())
        return;
    painter.fillRect(rect(), m_field->palette().color(QPalette::Text));
}

bool DOSCaret::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_field) {
        if (event->type() == QEvent::FocusIn)
            restartBlink();
        else if (event->type() == QEvent::FocusOut) {
            m_timer->stop();
            m_field->update(m_lastRect);
        }
    }
    return QObject::eventFilter(watched, event);
}

void DOSCaret::restartBlink() {
    m_phaseOn = true;
    const int flash = QApplication::cursorFlashTime();
    if (flash > 0 && m_field->hasFocus())
        m_timer->start(flash / 2);
    else
        m_timer->stop();
    m_field->update(m_lastRect);
    m_lastRect = rect();
    m_field->update(m_lastRect);
}

void DOSCaret::blink() {
    m_phaseOn = !m_phaseOn;
    m_lastRect = rect();
    m_field->update(m_lastRect);
}

DOSCaret* DOSCaret::installOn(QLineEdit* field) {
    field->setFrame(false);
    field->setAttribute(Qt::WA_MacShowFocusRect, false);
    QPalette palette = DOSStyle::dosPalette();
    palette.setColor(QPalette::Base, DOS::ink());
    field->setPalette(palette);
    return new DOSCaret(field);
}
