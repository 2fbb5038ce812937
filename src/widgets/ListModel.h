#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <functional>

// The list table's model: a read-only grid over whatever the list screens show
// now. It keeps no rows of its own; it asks for them on every query.
class ListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    struct Source {
        std::function<QStringList()> columns;
        std::function<QList<QStringList>()> rows;
        std::function<quint64()> generation; // changes whenever the rows were computed again
    };

    explicit ListModel(Source source, QObject* parent = nullptr);

    // Tells the view that everything may have changed: columns, rows and cells.
    void reload();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void noticeChange() const;

    Source m_source;
    mutable quint64 m_reportedGeneration = 0;
    mutable bool m_reloadQueued = false;
};
