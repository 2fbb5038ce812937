#include "look/DOSHeader.h"

#include "look/DOS.h"

#include <QPaintEvent>
#include <QPainter>

DOSHeader::DOSHeader(Qt::Orientation orientation, QWidget* parent) : QHeaderView(orientation, parent) {
    setFont(DOS::font(14));
    setHighlightSections(false);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void DOSHeader::paintEvent(QPaintEvent* event) {
    // Drawn whole here: the base class would paint the empty area in the style's colours.
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(event->rect(), DOS::ink());
    const bool horizontal = orientation() == Qt::Horizontal;
    for (int visual = 0; visual < count(); ++visual) {
        const int logical = logicalIndex(visual);
        if (isSectionHidden(logical))
            continue;
        const int position = sectionViewportPosition(logical);
        const int size = sectionSize(logical);
        const QRect section =
            horizontal ? QRect(position, 0, size, viewport()->height()) : QRect(0, position, viewport()->width(), size);
        if (section.intersects(event->rect()))
            paintSection(&painter, section, logical);
    }
}

void DOSHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->fillRect(rect, DOS::ink());
    painter->setPen(QPen(DOS::border(), 1));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(rect.adjusted(0, 0, -1, -1));
    const QString title = model() ? model()->headerData(logicalIndex, orientation()).toString() : QString();
    const QRect titleArea = rect.adjusted(7, 4, -7, -4);
    painter->setFont(font());
    painter->setPen(DOS::text());
    painter->setClipRect(titleArea);
    painter->drawText(titleArea, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      fontMetrics().elidedText(title, Qt::ElideRight, titleArea.width()));
    painter->restore();
}

QSize DOSHeader::sectionSizeFromContents(int logicalIndex) const {
    const QString title = model() ? model()->headerData(logicalIndex, orientation()).toString() : QString();
    const QFontMetrics metrics(font());
    return QSize(metrics.horizontalAdvance(title) + 14, metrics.height() + 8);
}
