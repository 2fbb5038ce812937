#include "look/CRTOverlay.h"

#include <QPaintEvent>
#include <QPainter>

CRTOverlay::CRTOverlay(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
}

QColor CRTOverlay::lineColor() {
    return QColor::fromRgbF(0, 0, 0, 0.12f);
}

void CRTOverlay::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const QRect dirty = event->rect();
    // Lines stay at multiples of 4 from the top whatever part is repainted.
    const int first = dirty.top() - dirty.top() % spacing;
    for (int y = first; y < height() && y <= dirty.bottom(); y += spacing)
        painter.fillRect(QRect(0, y, width(), 1), lineColor());
}
