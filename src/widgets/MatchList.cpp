#include "widgets/MatchList.h"

#include "look/DOS.h"
#include "look/DOSRowDelegate.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace {

constexpr int rowHeight = 30;
constexpr int visibleRows = 3;

} // namespace

MatchList::MatchList(QWidget* parent)
    : QWidget(parent), m_list(new QTableView), m_model(new QStandardItemModel(0, 1, this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list);

    m_list->setModel(m_model);
    m_list->setObjectName(QStringLiteral("match"));
    m_list->horizontalHeader()->hide();
    m_list->horizontalHeader()->setStretchLastSection(true);
    m_list->verticalHeader()->hide();
    m_list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_list->verticalHeader()->setDefaultSectionSize(rowHeight);
    m_list->setShowGrid(false); // every cell is boxed by the row delegate
    auto* rows = new DOSRowDelegate(m_list);
    rows->setFramesCells(true);
    m_list->setItemDelegate(rows);
    m_list->setFont(DOS::font(14));
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setTextElideMode(Qt::ElideRight);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_list->setFrameShape(QFrame::Box);
    m_list->setFrameShadow(QFrame::Plain);
    QPalette colours = m_list->palette();
    colours.setColor(QPalette::Base, DOS::blue());
    colours.setColor(QPalette::Window, DOS::blue());
    colours.setColor(QPalette::WindowText, DOS::border()); // the frame's line
    m_list->setPalette(colours);
    m_list->setFixedHeight(visibleRows * rowHeight);
    setFixedHeight(visibleRows * rowHeight);

    connect(m_list, &QAbstractItemView::clicked, this, [this] { choose(); });
    m_list->installEventFilter(this);
}

void MatchList::set(const QList<MatchItem>& items) {
    m_items = items;
    m_list->clearSelection();
    m_model->setRowCount(0);
    for (const MatchItem& item : items)
        m_model->appendRow(new QStandardItem(item.label));
}

void MatchList::choose() {
    const QModelIndexList selected = m_list->selectionModel()->selectedRows();
    if (selected.isEmpty())
        return;
    const int row = selected.first().row();
    if (row >= 0 && row < m_items.size() && onSelect)
        onSelect(m_items[row].id);
}

bool MatchList::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            choose();
            return true;
        }
    }
    return false;
}
