#include "lists/ListRows.h"

#include "lists/ListGenres.h"
#include "lists/Sections.h"
#include "print/ReportGraph.h"
#include "records/Codes.h"
#include "records/DateText.h"
#include "records/MoneyText.h"
#include "records/Ordering.h"
#include "records/RentalRules.h"
#include "records/Search.h"

#include <QHash>
#include <algorithm>
#include <array>

namespace {

const QString missing = QStringLiteral("—");
const QString inDebt = QStringLiteral("ATENÇÃO: CLIENTE EM DÉBITO");

QList<ListRow> rentalRows(const Store& store, const ListFilter& filter, Instant now) {
    QList<const Rental*> open;
    for (const Rental& rental : store.rentals)
        if (isOpen(rental) && (!filter.onlyLate || isLate(rental, now)))
            open.append(&rental);
    std::stable_sort(open.begin(), open.end(), [](const Rental* a, const Rental* b) { return a->due < b->due; });

    // The first film with an id wins, removed ones included.
    QHash<QString, const Film*> films;
    films.reserve(store.films.size());
    for (auto it = store.films.crbegin(); it != store.films.crend(); ++it)
        films[it->id] = &*it;

    QList<ListRow> rows;
    rows.reserve(open.size());
    for (const Rental* rental : open) {
        const Film* film = films.value(rental->film);
        const QString code = film != nullptr ? inventoryCode(film->code) : missing;
        const QString title = film != nullptr ? film->title : missing;
        if (filter.section == Section::rented)
            rows.append({rental->id, {code, title, isLate(*rental, now) ? inDebt : QStringLiteral("LOCADO")}});
        else
            rows.append({rental->id,
                         {code, title, dateTimeText(rental->start), dateTimeText(rental->due),
                          money(fineSoFar(*rental, now))}});
    }
    return rows;
}

QList<ListRow> customerRows(const Store& store, const ListFilter& filter, Instant now) {
    struct Pending {
        int open = 0;
        bool late = false;
    };
    QHash<QString, Pending> pending;
    for (const Rental& rental : store.rentals) {
        if (!isOpen(rental))
            continue;
        Pending& entry = pending[rental.customer];
        ++entry.open;
        entry.late = entry.late || isLate(rental, now);
    }
    QList<ListRow> rows;
    for (const Customer& customer : orderedCustomers(activeCustomers(store), filter.alphabeticalClients)) {
        const Pending state = pending.value(customer.id);
        const QString situation = state.late       ? inDebt
                                  : state.open > 0 ? QStringLiteral("%1 LOCAÇÃO(ÕES)").arg(state.open)
                                                   : QStringLiteral("SEM PENDÊNCIAS");
        rows.append({customer.id, {customerCode(customer), customer.name, situation}});
    }
    return rows;
}

QList<ListRow> filmRows(const Store& store, const ListFilter& filter) {
    QList<Film> shown;
    for (const Film& film : activeFilms(store))
        if (genreAdmits(film, filter.genre))
            shown.append(film);
    QList<ListRow> rows;
    rows.reserve(shown.size());
    for (const Film& film : orderedFilms(std::move(shown), filter.alphabeticalFilms))
        rows.append({film.id,
                     {inventoryCode(film.code), film.title, film.year ? QString::number(*film.year) : QString(),
                      film.genre, QString::number(film.copies)}});
    return rows;
}

QList<ListRow> reportRows(const Store& store, Instant now) {
    const QList<Film> films = activeFilms(store);
    qint64 copies = 0;
    for (const Film& film : films)
        copies += film.copies;
    qint64 open = 0;
    qint64 late = 0;
    for (const Rental& rental : store.rentals) {
        if (isOpen(rental)) {
            ++open;
            late += isLate(rental, now) ? 1 : 0;
        }
    }
    const qint64 everRented = std::max<qint64>(0, store.rentals.size() - store.reportRentalBaseline.value_or(0));
    const std::array<std::pair<QString, qint64>, 6> indicators{{
        {QStringLiteral("FITAS CADASTRADAS"), films.size()},
        {QStringLiteral("QUANTIDADE NO ACERVO"), copies},
        {QStringLiteral("CLIENTES CADASTRADOS"), activeCustomers(store).size()},
        {QStringLiteral("FITAS ALUGADAS"), open},
        {QStringLiteral("FITAS ATRASADAS"), late},
        {QStringLiteral("FILMES JÁ LOCADOS (TOTAL)"), everRented},
    }};
    qint64 maximum = indicators.front().second;
    for (const auto& indicator : indicators)
        maximum = std::max(maximum, indicator.second);
    QList<ListRow> rows;
    for (std::size_t i = 0; i < indicators.size(); ++i) {
        const auto& [label, value] = indicators[i];
        rows.append({QString::number(i), {label, QString::number(value), reportGraph(value, maximum)}});
    }
    return rows;
}

QList<ListRow> cashRows(const Store& store) {
    QList<const Entry*> entries;
    entries.reserve(store.entries.size());
    for (const Entry& entry : store.entries)
        entries.append(&entry);
    std::stable_sort(entries.begin(), entries.end(), [](const Entry* a, const Entry* b) { return b->date < a->date; });
    QList<ListRow> rows;
    rows.reserve(entries.size());
    for (const Entry* entry : entries)
        rows.append({entry->id,
                     {dateText(entry->date), entry->description,
                      entry->amount < 0 ? QStringLiteral("SAÍDA") : QStringLiteral("ENTRADA"), money(entry->amount)}});
    return rows;
}

bool dependsOnDueTimes(int section) {
    return section == Section::rented || section == Section::returns || section == Section::customers ||
           section == Section::reports;
}

} // namespace

QStringList listColumns(int section) {
    switch (section) {
    case Section::rented:
        return {QStringLiteral("CÓDIGO"), QStringLiteral("FILME"), QStringLiteral("SITUAÇÃO")};
    case Section::returns:
        return {QStringLiteral("CÓDIGO"), QStringLiteral("FILME"), QStringLiteral("DATA"), QStringLiteral("DATA DEV."),
                QStringLiteral("MULTA")};
    case Section::customers:
        return {QStringLiteral("CÓDIGO"), QStringLiteral("NOME"), QStringLiteral("SITUAÇÃO")};
    case Section::films:
        return {QStringLiteral("CÓDIGO"), QStringLiteral("FILME"), QStringLiteral("ANO"), QStringLiteral("GÊNERO"),
                QStringLiteral("QUANT.")};
    case Section::reports:
        return {QStringLiteral("INDICADOR"), QStringLiteral("QUANTIDADE"), QStringLiteral("GRÁFICO")};
    default:
        return {QStringLiteral("DATA"), QStringLiteral("DESCRIÇÃO"), QStringLiteral("TIPO"), QStringLiteral("VALOR")};
    }
}

int listColumnWidth(const QString& header) {
    if (header == QStringLiteral("FILME") || header == QStringLiteral("NOME") || header == QStringLiteral("INDICADOR"))
        return 340;
    return header == QStringLiteral("GRÁFICO") ? 220 : 120;
}

QList<ListRow> sectionRows(const Store& store, const ListFilter& filter, Instant now) {
    switch (filter.section) {
    case Section::rented:
    case Section::returns:
        return rentalRows(store, filter, now);
    case Section::customers:
        return customerRows(store, filter, now);
    case Section::films:
        return filmRows(store, filter);
    case Section::reports:
        return reportRows(store, now);
    default:
        return cashRows(store);
    }
}

QString searchedText(const ListRow& row) {
    return row.cells.join(u' ');
}

QList<ListRow> listRows(const Store& store, const ListFilter& filter, const QString& fieldText, Instant now) {
    QList<ListRow> rows = sectionRows(store, filter, now);
    const QString query = searchQuery(fieldText);
    if (query.isEmpty())
        return rows;
    QList<ListRow> kept;
    for (ListRow& row : rows)
        if (matches(searchedText(row), query))
            kept.append(std::move(row));
    return kept;
}

bool SteadySpan::contains(Instant now) const {
    return (!after || now > *after) && (!through || now <= *through) && (!from || now >= *from) &&
           (!before || now < *before);
}

SteadySpan steadySpan(const Store& store, int section, Instant now) {
    SteadySpan span;
    if (!dependsOnDueTimes(section))
        return span;
    // A rental is late while due < now, so the marks hold for now in (latest past due, earliest due to come].
    for (const Rental& rental : store.rentals) {
        if (!isOpen(rental))
            continue;
        if (isLate(rental, now)) {
            if (!span.after || *span.after < rental.due)
                span.after = rental.due;
        } else if (!span.through || rental.due < *span.through) {
            span.through = rental.due;
        }
    }
    if (section == Section::returns) { // fines count calendar days
        const QDate today = calendar::localDate(now);
        span.from = calendar::startOfDay(today);
        span.before = calendar::startOfDay(today.addDays(1));
    }
    return span;
}
