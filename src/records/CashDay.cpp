#include "records/CashDay.h"

#include "records/DateText.h"
#include "records/MoneyText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Before the boundary as dateText would place it: within a second of it the
// instant goes through the same millisecond rounding as every date text.
bool before(Instant instant, Instant boundary) {
    if (std::abs(instant.seconds - boundary.seconds) > 1.0)
        return instant < boundary;
    return instant.toDateTime() < boundary.toDateTime();
}

QString padded(const QString& text, int width) {
    return text.leftJustified(width, u' ');
}

QString rightAligned(const QString& text, int width) {
    return text.rightJustified(width, u' ');
}

} // namespace

CashKind cashKind(const Entry& entry) {
    if (entry.description.startsWith(QStringLiteral("Locação: ")))
        return CashKind::rentals;
    if (entry.description.startsWith(QStringLiteral("Multa: ")))
        return CashKind::fines;
    if (entry.description.startsWith(QStringLiteral("Taxa de rebobinagem: ")))
        return CashKind::rewinding;
    if (entry.description.startsWith(QStringLiteral("Abono de multa: ")))
        return CashKind::forgiven;
    return entry.amount < 0 ? CashKind::outgoings : CashKind::otherIncome;
}

QString cashKindName(CashKind kind) {
    switch (kind) {
    case CashKind::rentals:
        return QStringLiteral("LOCAÇÕES");
    case CashKind::fines:
        return QStringLiteral("MULTAS");
    case CashKind::rewinding:
        return QStringLiteral("REBOBINAGEM");
    case CashKind::forgiven:
        return QStringLiteral("ABONOS");
    case CashKind::otherIncome:
        return QStringLiteral("OUTRAS ENTRADAS");
    case CashKind::outgoings:
        break;
    }
    return QStringLiteral("SAÍDAS");
}

qint64 cashSum(qint64 sum, qint64 amount) {
    qint64 result = 0;
    if (__builtin_add_overflow(sum, amount, &result))
        return amount < 0 ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
    return result;
}

CashDay cashDay(const Store& store, QDate day) {
    CashDay closing;
    closing.day = day;
    // Local midnights, so a day of 23 or 25 hours is still one day.
    const Instant start = calendar::startOfDay(day);
    const Instant end = calendar::startOfDay(day.addDays(1));
    for (const Entry& entry : store.entries) {
        if (!before(entry.date, end))
            continue;
        closing.bookBalance = cashSum(closing.bookBalance, entry.amount);
        if (before(entry.date, start))
            continue;
        CashGroup& group = closing.groups[std::size_t(cashKind(entry))];
        ++group.count;
        group.sum = cashSum(group.sum, entry.amount);
        closing.balance = cashSum(closing.balance, entry.amount);
        closing.entries.append(entry);
    }
    std::stable_sort(closing.entries.begin(), closing.entries.end(),
                     [](const Entry& a, const Entry& b) { return a.date < b.date; });
    return closing;
}

std::optional<QDate> typedDay(const QString& text) {
    const std::optional<Instant> start = parseDate(text);
    if (!start)
        return std::nullopt;
    return calendar::localDate(*start);
}

QString cashDayTitle(QDate day) {
    return QStringLiteral("FECHAMENTO DE CAIXA ") + day.toString(u"dd/MM/yyyy");
}

QString cashDayText(const CashDay& day) {
    constexpr int nameWidth = 16, countWidth = 6, moneyWidth = 18;
    QStringList lines;
    lines.append(padded(QStringLiteral("GRUPO"), nameWidth) + rightAligned(QStringLiteral("QTD."), countWidth) +
                 rightAligned(QStringLiteral("VALOR"), moneyWidth));
    for (int kind = 0; kind < cashKindCount; ++kind) {
        const CashGroup& group = day.groups[std::size_t(kind)];
        lines.append(padded(cashKindName(CashKind(kind)), nameWidth) +
                     rightAligned(QString::number(group.count), countWidth) +
                     rightAligned(money(group.sum), moneyWidth));
    }
    lines.append(QString());
    lines.append(padded(QStringLiteral("SALDO DO DIA"), nameWidth + countWidth) +
                 rightAligned(money(day.balance), moneyWidth));
    lines.append(padded(QStringLiteral("SALDO ACUMULADO"), nameWidth + countWidth) +
                 rightAligned(money(day.bookBalance), moneyWidth));
    return lines.join(u'\n');
}

QList<QStringList> cashDayTable(const CashDay& day) {
    QList<QStringList> table;
    table.reserve(day.entries.size() + 1);
    table.append(
        {QStringLiteral("DATA"), QStringLiteral("DESCRIÇÃO"), QStringLiteral("GRUPO"), QStringLiteral("VALOR")});
    for (const Entry& entry : day.entries)
        table.append({dateTimeText(entry.date), entry.description, cashKindName(cashKind(entry)), money(entry.amount)});
    return table;
}
