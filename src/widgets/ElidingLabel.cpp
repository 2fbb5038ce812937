#include "widgets/ElidingLabel.h"

#include <QPainter>

ElidingLabel::ElidingLabel(QWidget* parent) : QLabel(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize ElidingLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

QString ElidingLabel::shownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

void ElidingLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), int(Qt::AlignLeft | Qt::AlignVCenter), shownText());
}
