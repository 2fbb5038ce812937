#pragma once

#include "records/Records.h"

#include <QDate>
#include <QList>
#include <QStringList>
#include <array>
#include <optional>

// The till closed for one local calendar day: the day's cash entries grouped by
// kind, the day's balance and the balance of the whole book once the day ended.

enum class CashKind { rentals, fines, rewinding, forgiven, otherIncome, outgoings };
inline constexpr int cashKindCount = 6;

// By the description's prefix for what the rules write; anything else by its sign
// (a zero amount is no money out, so it counts with the other income).
CashKind cashKind(const Entry& entry);
QString cashKindName(CashKind kind); // "LOCAÇÕES", "MULTAS", "REBOBINAGEM", "ABONOS", "OUTRAS ENTRADAS", "SAÍDAS"

struct CashGroup {
    qint64 count = 0;
    qint64 sum = 0;
};

struct CashDay {
    QDate day;
    std::array<CashGroup, cashKindCount> groups; // indexed by CashKind
    qint64 balance = 0;                          // the day's entries summed
    qint64 bookBalance = 0;                      // every entry up to the end of the day
    QList<Entry> entries;                        // the day's entries in time order (book order on ties)

    const CashGroup& group(CashKind kind) const { return groups[std::size_t(kind)]; }
};

CashDay cashDay(const Store& store, QDate day);

// sum + amount, pinned at the ends of the 64-bit range: hand-edited amounts can be anything.
qint64 cashSum(qint64 sum, qint64 amount);

// The day typed in the "DIA" field: exactly dd/MM/yyyy, else nothing.
std::optional<QDate> typedDay(const QString& text);

QString cashDayTitle(QDate day);         // "FECHAMENTO DE CAIXA 08/10/2026"
QString cashDayText(const CashDay& day); // the dialog's lines: one per group, then both balances

// The day's entries as a table: header DATA, DESCRIÇÃO, GRUPO, VALOR, then one row per entry.
QList<QStringList> cashDayTable(const CashDay& day);
