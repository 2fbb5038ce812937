#include "records/History.h"

#include "records/Codes.h"
#include "records/DateText.h"
#include "records/MoneyText.h"
#include "records/RentalRules.h"
#include "records/Search.h"

#include <algorithm>

namespace {

const QString missing = QStringLiteral("—");
const QString forgivenPrefix = QStringLiteral("Abono de multa: ");

// The first record with an id wins, removed ones included, as in the lists.
template <typename Record> QHash<QString, const Record*> byID(const QList<Record>& records) {
    QHash<QString, const Record*> found;
    found.reserve(records.size());
    for (auto it = records.crbegin(); it != records.crend(); ++it)
        found[it->id] = &*it;
    return found;
}

// The title a return writes into its entries: "Fita" when the film is gone.
QString entryTitle(const Film* film) {
    return film != nullptr ? film->title : QStringLiteral("Fita");
}

// Newest start first; among equal starts the one made later first.
QList<const Rental*> newestFirst(const Store& store, const auto& belongs) {
    QList<const Rental*> rentals;
    for (auto it = store.rentals.crbegin(); it != store.rentals.crend(); ++it)
        if (belongs(*it))
            rentals.append(&*it);
    std::stable_sort(rentals.begin(), rentals.end(),
                     [](const Rental* a, const Rental* b) { return b->start < a->start; });
    return rentals;
}

QString copyText(const Film* film, const Rental& rental) {
    if (film == nullptr)
        return missing;
    // Rentals from before copy numbers existed name the film only.
    return rental.copy ? copyCode(film->code, *rental.copy) : inventoryCode(film->code);
}

QString returnedText(const Rental& rental) {
    return rental.returned ? dateTimeText(*rental.returned) : QStringLiteral("EM ABERTO");
}

QString fineText(const Rental& rental, Instant now) {
    if (isOpen(rental))
        return money(fineSoFar(rental, now));
    return rental.fine ? money(*rental.fine) : missing; // returned before fines were stored
}

QString feeText(const Rental& rental) {
    if (isOpen(rental))
        return QString();
    return rental.rewindFee ? money(*rental.rewindFee) : missing;
}

} // namespace

QHash<QString, qint64> forgivenFines(const Store& store) {
    QHash<double, QList<qsizetype>> unclaimed; // forgiveness entries by their instant, in book order
    for (qsizetype i = 0; i < store.entries.size(); ++i)
        if (store.entries[i].description.startsWith(forgivenPrefix))
            unclaimed[store.entries[i].date.seconds].append(i);
    QHash<QString, qint64> forgiven;
    if (unclaimed.isEmpty())
        return forgiven;

    const auto films = byID(store.films);
    for (const Rental& rental : store.rentals) {
        if (!rental.returned)
            continue;
        const auto at = unclaimed.find(rental.returned->seconds);
        if (at == unclaimed.end())
            continue;
        const QString title = entryTitle(films.value(rental.film));
        const QString prefix = forgivenPrefix + title + QStringLiteral(" — ");
        const QString fine = QStringLiteral("Multa: ") + title;
        // Two tapes of one film may come back at one instant: the forgiveness follows
        // its own return's "Multa: " entry, whose amount is that rental's fine.
        const auto ownFine = [&](qsizetype index) {
            for (qsizetype i = index - 1; i >= 0 && store.entries[i].date == *rental.returned; --i)
                if (store.entries[i].description == fine)
                    return store.entries[i].amount == rental.fine.value_or(0);
            return false;
        };
        QList<qsizetype>& candidates = at.value();
        const auto match = std::find_if(candidates.begin(), candidates.end(), [&](qsizetype index) {
            return store.entries[index].description.startsWith(prefix) && ownFine(index);
        });
        if (match == candidates.end())
            continue;
        forgiven[rental.id] = -store.entries[*match].amount;
        candidates.erase(match);
    }
    return forgiven;
}

QStringList customerHistoryColumns() {
    return {QStringLiteral("FILME"),       QStringLiteral("CÓDIGO"),       QStringLiteral("DATA"),
            QStringLiteral("DATA DEV."),   QStringLiteral("DEVOLVIDA EM"), QStringLiteral("MULTA"),
            QStringLiteral("REBOBINAGEM"), QStringLiteral("ABONO")};
}

QList<HistoryRow> customerHistoryRows(const Store& store, const QString& customerID, Instant now) {
    const auto films = byID(store.films);
    const QHash<QString, qint64> forgiven = forgivenFines(store);
    QList<HistoryRow> rows;
    for (const Rental* rental : newestFirst(store, [&](const Rental& r) { return r.customer == customerID; })) {
        const Film* film = films.value(rental->film);
        const auto amount = forgiven.constFind(rental->id);
        HistoryRow row{rental->id,
                       {film != nullptr ? film->title : missing, copyText(film, *rental), dateTimeText(rental->start),
                        dateTimeText(rental->due), returnedText(*rental), fineText(*rental, now), feeText(*rental),
                        amount != forgiven.cend() ? money(*amount) : QString()},
                       {}};
        row.searched = row.cells.join(u' ');
        rows.append(std::move(row));
    }
    return rows;
}

HistorySummary customerHistorySummary(const Store& store, const QString& customerID, Instant now) {
    const QHash<QString, qint64> forgiven = forgivenFines(store);
    HistorySummary summary;
    for (const Rental& rental : store.rentals) {
        if (rental.customer != customerID)
            continue;
        ++summary.rentals;
        if (isOpen(rental)) {
            ++summary.open;
            summary.late += isLate(rental, now) ? 1 : 0;
            continue;
        }
        summary.forgiven += forgiven.value(rental.id);
        summary.finesPaid += rental.fine.value_or(0);
        summary.feesPaid += rental.rewindFee.value_or(0);
    }
    // The "Multa: " entry holds the whole fine; the forgiveness gave part of it back.
    summary.finesPaid -= summary.forgiven;
    return summary;
}

QString historySummaryText(const HistorySummary& summary) {
    const QString separator = QStringLiteral("  │  ");
    QString text = QStringLiteral("LOCAÇÕES: %1").arg(summary.rentals) + separator +
                   QStringLiteral("EM ABERTO: %1").arg(summary.open) + separator +
                   QStringLiteral("ATRASADAS: %1").arg(summary.late) + separator + QStringLiteral("MULTAS PAGAS: ") +
                   money(summary.finesPaid) + separator + QStringLiteral("TAXAS PAGAS: ") + money(summary.feesPaid);
    if (summary.forgiven != 0)
        text += separator + QStringLiteral("ABONOS: ") + money(summary.forgiven);
    return text;
}

QStringList filmHistoryColumns() {
    return {QStringLiteral("CÓDIGO"),    QStringLiteral("CLIENTE"),      QStringLiteral("DATA"),
            QStringLiteral("DATA DEV."), QStringLiteral("DEVOLVIDA EM"), QStringLiteral("MULTA")};
}

QList<HistoryRow> filmHistoryRows(const Store& store, const QString& filmID, Instant now) {
    const auto films = byID(store.films);
    const auto customers = byID(store.customers);
    const Film* film = films.value(filmID);
    QList<HistoryRow> rows;
    for (const Rental* rental : newestFirst(store, [&](const Rental& r) { return r.film == filmID; })) {
        const Customer* customer = customers.value(rental->customer);
        const QString copy = copyText(film, *rental);
        const QString name = customer != nullptr ? customer->name : missing;
        rows.append({rental->id,
                     {copy, name, dateTimeText(rental->start), dateTimeText(rental->due), returnedText(*rental),
                      fineText(*rental, now)},
                     copy + u' ' + name});
    }
    return rows;
}

QList<HistoryRow> searchedHistory(QList<HistoryRow> rows, const QString& fieldText) {
    const QString query = searchQuery(fieldText);
    if (query.isEmpty())
        return rows;
    QList<HistoryRow> kept;
    for (HistoryRow& row : rows)
        if (matches(row.searched, query))
            kept.append(std::move(row));
    return kept;
}
