#pragma once

#include "records/Records.h"

#include <QStringList>
#include <optional>

// What a list screen shows, computed from the store alone: no widgets here, so
// the rows can be checked and timed without a window.

struct ListRow {
    QString id; // the record behind the row; the row's position in the reports
    QStringList cells;
};

// Everything besides the store and the search that decides a list's rows.
struct ListFilter {
    int section = 0;
    std::optional<QString> genre; // film list only
    bool alphabeticalFilms = true;
    bool alphabeticalClients = true;
    bool onlyLate = false; // rented tapes only

    friend bool operator==(const ListFilter&, const ListFilter&) = default;
};

QStringList listColumns(int section);
int listColumnWidth(const QString& header);

// The section's rows before the search, in screen order.
QList<ListRow> sectionRows(const Store& store, const ListFilter& filter, Instant now);

// What the search looks into: the cells joined by single spaces.
QString searchedText(const ListRow& row);

// The section's rows after the search: what the table shows.
QList<ListRow> listRows(const Store& store, const ListFilter& filter, const QString& fieldText, Instant now);

// The stretch of time around an instant in which a section's rows stay the same:
// late marks flip when the clock passes a due time, fines when the local day changes.
struct SteadySpan {
    std::optional<Instant> after;   // now > after
    std::optional<Instant> through; // now <= through
    std::optional<Instant> from;    // now >= from
    std::optional<Instant> before;  // now < before

    bool contains(Instant now) const;
};
SteadySpan steadySpan(const Store& store, int section, Instant now);
