#pragma once

#include "records/Records.h"

#include <QHash>
#include <QStringList>

// What a customer's or a film's history shows, from the store alone: every rental
// ever made, newest first. The screens put the rows in a table like any list.

struct HistoryRow {
    QString id; // the rental behind the row
    QStringList cells;
    QString searched; // what the search field looks into
};

// Above a customer's history. Paid amounts count returned rentals only: the fines
// charged less what was forgiven, and the rewind fees.
struct HistorySummary {
    qint64 rentals = 0;
    qint64 open = 0;
    qint64 late = 0;
    qint64 finesPaid = 0;
    qint64 feesPaid = 0;
    qint64 forgiven = 0;

    friend bool operator==(const HistorySummary&, const HistorySummary&) = default;
};

// The amount forgiven at each return, by rental id. A forgiveness lives only in the
// cash book: the entry "Abono de multa: " + title + " — " + reason dated the return
// instant, its amount negative, written right after that return's "Multa: " entry.
// Each entry counts for one rental only.
QHash<QString, qint64> forgivenFines(const Store& store);

// "FILME", "CÓDIGO" (copy code), "DATA", "DATA DEV.", "DEVOLVIDA EM" ("EM ABERTO"),
// "MULTA" (the fine so far while open), "REBOBINAGEM", "ABONO" (empty when none).
QStringList customerHistoryColumns();
QList<HistoryRow> customerHistoryRows(const Store& store, const QString& customerID, Instant now);
HistorySummary customerHistorySummary(const Store& store, const QString& customerID, Instant now);
QString historySummaryText(const HistorySummary& summary);

// "CÓDIGO" (copy code), "CLIENTE", "DATA", "DATA DEV.", "DEVOLVIDA EM", "MULTA";
// searched by the copy code and the customer's name.
QStringList filmHistoryColumns();
QList<HistoryRow> filmHistoryRows(const Store& store, const QString& filmID, Instant now);

// The search field over a history: trimmed of spaces and tabs, case- and
// accent-blind; an empty query keeps every row.
QList<HistoryRow> searchedHistory(QList<HistoryRow> rows, const QString& fieldText);
