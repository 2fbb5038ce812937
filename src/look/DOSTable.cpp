#include "look/DOSTable.h"

#include "look/DOS.h"
#include "look/DOSHeader.h"
#include "look/DOSRowDelegate.h"
#include "look/DOSStyle.h"

#include <QHeaderView>
#include <QPainter>

DOSTable::DOSTable(QWidget* parent)
    : QTableView(parent), m_header(new DOSHeader(Qt::Horizontal, this)), m_delegate(new DOSRowDelegate(this)) {
    setHorizontalHeader(m_header);
    setItemDelegate(m_delegate);
    setFont(DOS::font(14));

    QPalette palette = DOSStyle::dosPalette();
    // A plain frame takes its colour from WindowText.
    palette.setColor(QPalette::WindowText, DOS::border());
    setPalette(palette);
    viewport()->setAutoFillBackground(true);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setLineWidth(1);

    // The grid is drawn here so that it can be vertical lines only.
    setShowGrid(false);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(34);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setWordWrap(false);
    setTextElideMode(Qt::ElideRight);
    setAttribute(Qt::WA_MacShowFocusRect, false);
}

void DOSTable::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(DOS::border(), 1));
    const int bottom = viewport()->height() - 1;
    for (int visual = 0; visual < m_header->count(); ++visual) {
        const int column = m_header->logicalIndex(visual);
        if (m_header->isSectionHidden(column))
            continue;
        const int x = columnViewportPosition(column) + columnWidth(column) - 1;
        if (x >= 0 && x < viewport()->width())
            painter.drawLine(x, 0, x, bottom);
    }
}
