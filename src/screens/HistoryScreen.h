#pragma once

#include "records/Records.h"

#include <QDate>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

class ScreenHost;

// Every rental of one customer or one film, newest first, in the shared list
// table: the controller asks it for the columns and rows while it is on show, so
// the search field, the keys and the CSV export work as on any list.
class HistoryScreen : public QObject {
    Q_OBJECT
public:
    struct Commands {
        std::function<void()> back;      // to the record it was opened from
        std::function<void()> exportCSV; // what the table shows, as on any list
    };
    struct Shown {
        QStringList ids; // the rentals, in row order
        QList<QStringList> cells;
    };

    // section: customers or films; id: the record whose history is shown.
    HistoryScreen(ScreenHost& host, int section, const QString& id);
    // Builds the heading, the table and the actions into the host's body, and goes
    // with that body. The controller must already answer columns and rows from here.
    void show(const Commands& commands);

    const QString& recordID() const { return m_id; }
    QStringList columns() const;
    // Starting widths: wide enough for a date with its time.
    static int columnWidth(const QString& header);
    // Computed again only when the store, the search or the day changes.
    const Shown& rows(const QString& fieldText);
    // Grows by one every time the rows are computed again.
    quint64 generation() const { return m_generation; }

private:
    ScreenHost& m_host;
    bool m_customer;
    QString m_id;

    bool m_hasShown = false;
    Store m_store; // shares the lists it was made from: a later change detaches them
    QDate m_day;
    QString m_query;
    Shown m_shown;
    quint64 m_generation = 0;
};
