#include "look/DOSRowDelegate.h"

#include "look/DOS.h"

#include <QPainter>

namespace {
constexpr int labelInset = 6;
} // namespace

DOSRowDelegate::DOSRowDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

QColor DOSRowDelegate::backgroundColor(bool selected) {
    return selected ? DOS::selection() : DOS::blue();
}

QColor DOSRowDelegate::labelColor(bool selected) {
    return selected ? QColor(Qt::black) : DOS::text();
}

void DOSRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const bool selected = option.state & QStyle::State_Selected;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->fillRect(option.rect, backgroundColor(selected));
    if (m_framesCells) {
        painter->setPen(QPen(DOS::border(), 1));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    const QFont font = option.font;
    const QFontMetrics metrics(font);
    const QRect area = option.rect.adjusted(labelInset, 0, -labelInset, 0);
    const QString label = metrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight, area.width());
    painter->setFont(font);
    painter->setPen(labelColor(selected));
    painter->setClipRect(option.rect);
    painter->drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, label);
    painter->restore();
}

QSize DOSRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QFontMetrics metrics(option.font);
    return QSize(metrics.horizontalAdvance(index.data(Qt::DisplayRole).toString()) + 2 * labelInset,
                 metrics.height() + 8);
}
