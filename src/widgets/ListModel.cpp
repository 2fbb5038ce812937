#include "widgets/ListModel.h"

#include <QMetaObject>

ListModel::ListModel(Source source, QObject* parent) : QAbstractTableModel(parent), m_source(std::move(source)) {}

void ListModel::reload() {
    m_reloadQueued = false;
    beginResetModel();
    endResetModel();
}

int ListModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid())
        return 0;
    const auto count = int(m_source.rows().size());
    m_reportedGeneration = m_source.generation();
    return count;
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_source.columns().size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid())
        return {};
    const QList<QStringList> rows = m_source.rows();
    noticeChange();
    if (index.row() >= rows.size() || index.column() >= rows.at(index.row()).size())
        return {};
    return rows.at(index.row()).at(index.column());
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    const QStringList columns = m_source.columns();
    return section >= 0 && section < columns.size() ? QVariant(columns.at(section)) : QVariant();
}

// The rows can change under the view without a reload (the clock passing a due
// time): the view learns of it on the next turn of the event loop, not inside a paint.
void ListModel::noticeChange() const {
    if (m_reloadQueued || m_source.generation() == m_reportedGeneration)
        return;
    m_reloadQueued = true;
    QMetaObject::invokeMethod(const_cast<ListModel*>(this), &ListModel::reload, Qt::QueuedConnection);
}
