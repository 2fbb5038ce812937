#include "look/DOSPopup.h"

#include "look/DOS.h"
#include "look/DOSStyle.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QPolygon>

DOSPopup::DOSPopup(QWidget* parent) : QComboBox(parent) {
    setFont(DOS::font(14));
    setFocusPolicy(Qt::StrongFocus);
    // The list that opens is a separate window and does not inherit the palette.
    QPalette palette = DOSStyle::dosPalette();
    palette.setColor(QPalette::Base, DOS::ink());
    palette.setColor(QPalette::Window, DOS::ink());
    setPalette(palette);
    view()->setPalette(palette);
    view()->setFont(font());
    if (QWidget* container = view()->parentWidget())
        container->setPalette(palette);
}

QSize DOSPopup::sizeHint() const {
    const QFontMetrics metrics(font());
    int widest = metrics.horizontalAdvance(placeholderText());
    for (int i = 0; i < count(); ++i)
        widest = qMax(widest, metrics.horizontalAdvance(itemText(i)));
    return QSize(widest + 20 + 30, metrics.height() + 10);
}

QSize DOSPopup::minimumSizeHint() const {
    return QSize(60, QFontMetrics(font()).height() + 10);
}

void DOSPopup::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const QRect frame = rect();
    painter.fillRect(frame, DOS::ink());
    painter.setPen(QPen(DOS::border(), 1));
    painter.drawRect(frame.adjusted(0, 0, -1, -1));

    painter.setFont(font());
    painter.setPen(DOS::text());
    const QRect titleArea = frame.adjusted(10, 3, -10, -3);
    painter.drawText(titleArea, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, currentText());

    // 10 wide, 6 high, its point 15 from the right edge.
    const int right = frame.width();
    const int middle = frame.height() / 2;
    const QPolygon arrow(
        {QPoint(right - 20, middle - 3), QPoint(right - 10, middle - 3), QPoint(right - 15, middle + 3)});
    painter.setPen(Qt::NoPen);
    painter.setBrush(DOS::text());
    painter.drawPolygon(arrow);
}
