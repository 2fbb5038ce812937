#pragma once

#include <QList>
#include <QString>
#include <QWidget>
#include <functional>

class QStandardItemModel;
class QTableView;

// One choice offered by a match list: the record's id and the text shown for it.
struct MatchItem {
    QString id;
    QString label;
};

// The drop-down under a search field: three rows of 30 pixels visible, more by
// scrolling. A click on a row, or Enter on the list, chooses it.
class MatchList : public QWidget {
    Q_OBJECT

public:
    explicit MatchList(QWidget* parent = nullptr);

    QTableView* list() const { return m_list; }
    const QList<MatchItem>& items() const { return m_items; }

    // Replaces the rows; nothing is selected afterwards.
    void set(const QList<MatchItem>& items);
    // Passes the selected row's id to onSelect; nothing when no row is selected.
    void choose();

    std::function<void(const QString& id)> onSelect;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QTableView* m_list;
    QStandardItemModel* m_model;
    QList<MatchItem> m_items;
};
