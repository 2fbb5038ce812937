#include "look/DOSSearchField.h"

#include "look/DOS.h"
#include "look/DOSCaret.h"
#include "look/DOSStyle.h"

#include <QPainter>

namespace {
// QLineEdit keeps 2 pixels of its own before the text and 1 above and below it.
constexpr int lineEditMargin = 2;
constexpr int textInset = 30;
} // namespace

DOSSearchField::DOSSearchField(QWidget* parent) : QLineEdit(parent) {
    setFont(DOS::font(16));
    m_caret = DOSCaret::installOn(this);
    setTextMargins(textInset - lineEditMargin, 2, textInset - lineEditMargin, 2);
}

QSize DOSSearchField::sizeHint() const {
    return QSize(QLineEdit::sizeHint().width(), 32);
}

void DOSSearchField::paintEvent(QPaintEvent* event) {
    // The line edit fills the ground and draws text, selection and caret; the frame
    // and the magnifier go on top, outside the text area.
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, false);
    m_caret->paint(painter);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(DOS::border(), 1));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));

    painter.setPen(QPen(DOS::text(), 1));
    const int middle = height() / 2;
    // A ring in the 11-pixel square at (9, middle - 6), its handle running down and to
    // the right. QPainter strokes a rectangle's outline one pixel beyond its width.
    painter.drawEllipse(QRect(9, middle - 6, 10, 10));
    painter.drawLine(QPoint(18, middle + 4), QPoint(24, middle + 10));
}
