#include "records/RentalRules.h"

#include "records/DateText.h"
#include "records/FilmCSVError.h"
#include "records/MoneyText.h"
#include "records/Search.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <limits>

bool isOpen(const Rental& rental) {
    return !rental.returned.has_value();
}

bool isLate(const Rental& rental, Instant now) {
    return isOpen(rental) && rental.due < now;
}

// Saturating: a return is never refused over an absurd fine, and the operator sees
// the largest amount the cash book can hold.
qint64 fineFor(qint64 days, qint64 finePerDay) {
    qint64 product = 0;
    if (__builtin_mul_overflow(days, finePerDay, &product))
        return (finePerDay < 0) ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
    return product;
}

qint64 fineSoFar(const Rental& rental, Instant now) {
    return fineFor(overdue(rental, now), rental.finePerDay);
}

std::optional<qint64> requestedCopy(const QString& code) {
    const QStringList pieces = code.trimmed().split(QLatin1Char('-'));
    if (pieces.size() < 3)
        return std::nullopt;
    const QString& last = pieces.last();
    // Digits only: "COD-0001- 2" or "COD-0001-+2" is no copy code.
    if (last.isEmpty() || last.size() > 18 ||
        !std::all_of(last.cbegin(), last.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; }))
        return std::nullopt;
    return last.toLongLong();
}

std::optional<RuleRefusal> rentalChoiceRefusal(const Store& store, const QString& filmID, const QString& customerID) {
    const auto film = std::find_if(store.films.cbegin(), store.films.cend(),
                                   [&](const Film& candidate) { return candidate.id == filmID; });
    const auto customer = std::find_if(store.customers.cbegin(), store.customers.cend(),
                                       [&](const Customer& candidate) { return candidate.id == customerID; });
    if (film == store.films.cend() || customer == store.customers.cend() || film->deleted.value_or(false) ||
        customer->deleted.value_or(false) || inUse(store, film->id) >= film->copies)
        return RuleRefusal{
            QStringLiteral("Selecione filme e cliente"),
            QStringLiteral("Escolha um filme disponível e um cliente cadastrado nas listas de pesquisa.")};
    return std::nullopt;
}

Ruled<Store> rentedStore(const Store& store, const RentalRequest& request) {
    if (std::optional<RuleRefusal> refusal = rentalChoiceRefusal(store, request.film, request.customer))
        return *refusal;
    const auto film = std::find_if(store.films.cbegin(), store.films.cend(),
                                   [&](const Film& candidate) { return candidate.id == request.film; });
    const auto customer = std::find_if(store.customers.cbegin(), store.customers.cend(),
                                       [&](const Customer& candidate) { return candidate.id == request.customer; });
    const std::optional<qint64> copy = freeCopy(store, *film, request.copy);
    if (!copy)
        return RuleRefusal{QStringLiteral("Exemplar indisponível"),
                           QStringLiteral("Esta fita já está alugada ou não existe.")};
    Store changed = store;
    changed.rentals.append(Rental{.id = newIdentifier(),
                                  .film = film->id,
                                  .customer = customer->id,
                                  .start = request.start,
                                  .due = request.due,
                                  .price = film->price,
                                  .finePerDay = request.finePerDay,
                                  .copy = copy});
    changed.entries.append(
        Entry{.id = newIdentifier(),
              .date = request.start,
              .description = QStringLiteral("Locação: ") + film->title + QStringLiteral(" / ") + customer->name,
              .amount = film->price});
    return changed;
}

Ruled<Store> cashEntryStore(const Store& store, const QString& description, const QString& kind, const QString& amount,
                            Instant now) {
    const std::optional<qint64> value = cents(amount);
    if (!value || *value <= 0 || description.isEmpty())
        return RuleRefusal{};
    const QString folded = foldedKey(kind);
    if (folded != QStringLiteral("entrada") && folded != QStringLiteral("saida"))
        return RuleRefusal{QStringLiteral("Tipo inválido"), QStringLiteral("Informe entrada ou saída.")};
    Store changed = store;
    changed.entries.append(Entry{.id = newIdentifier(),
                                 .date = now,
                                 .description = description,
                                 .amount = folded == QStringLiteral("entrada") ? *value : -*value});
    return changed;
}

Instant automaticDue(Instant start, bool release) {
    // Elapsed time, not calendar days: a daylight-saving change moves the clock
    // time of the due date, never the length of the rental.
    return start.plusSeconds(release ? 86'400 : 259'200);
}

std::optional<qint64> freeCopy(const Store& store, const Film& film, std::optional<qint64> requested) {
    if (film.copies < 1)
        return std::nullopt;

    QSet<qint64> taken;
    qsizetype legacy = 0;
    for (const Rental& rental : store.rentals) {
        if (rental.film != film.id || !isOpen(rental))
            continue;
        if (rental.copy)
            taken.insert(*rental.copy);
        else
            ++legacy;
    }
    // The lowest free copy is at most one past the number taken, so the search
    // stays short however many copies the film has.
    const auto lowestFree = [&]() -> std::optional<qint64> {
        for (qint64 copy = 1; copy <= film.copies; ++copy) {
            if (!taken.contains(copy))
                return copy;
        }
        return std::nullopt;
    };
    // Rentals from before copy numbers existed hold the lowest copies left free.
    for (; legacy > 0; --legacy) {
        const auto copy = lowestFree();
        if (!copy)
            break;
        taken.insert(*copy);
    }

    if (requested) {
        if (*requested >= 1 && *requested <= film.copies && !taken.contains(*requested))
            return requested;
        return std::nullopt;
    }
    return lowestFree();
}

qint64 overdue(const Rental& rental, Instant now) {
    // Counted between local dates, so a 23- or 25-hour day is still one day.
    const qint64 days = calendar::localDate(rental.due).daysTo(calendar::localDate(now));
    return std::max<qint64>(days, 0);
}

Store returnedStore(const Store& store, const QString& id, bool rewound, Instant now) {
    const auto found = std::find_if(store.rentals.cbegin(), store.rentals.cend(),
                                    [&](const Rental& rental) { return rental.id == id && isOpen(rental); });
    // Only an open rental can be returned, so a fine or fee is never charged twice.
    if (found == store.rentals.cend())
        throw FilmCSVError::invalid(QStringLiteral("Esta fita já foi devolvida."));

    Store changed = store;
    Rental& rental = changed.rentals[found - store.rentals.cbegin()];
    const qint64 fine = fineSoFar(rental, now);

    const auto film = std::find_if(store.films.cbegin(), store.films.cend(),
                                   [&](const Film& candidate) { return candidate.id == rental.film; });
    const QString title = film != store.films.cend() ? film->title : QStringLiteral("Fita");

    rental.returned = now;
    rental.fine = fine;
    rental.rewound = rewound;
    rental.rewindFee = rewound ? 0 : rewindFee;

    if (fine > 0)
        changed.entries.append({newIdentifier(), now, QStringLiteral("Multa: ") + title, fine});
    if (!rewound)
        changed.entries.append({newIdentifier(), now, QStringLiteral("Taxa de rebobinagem: ") + title, rewindFee});
    return changed;
}

qint64 inUse(const Store& store, const QString& film) {
    return std::count_if(store.rentals.cbegin(), store.rentals.cend(),
                         [&](const Rental& rental) { return rental.film == film && isOpen(rental); });
}

QList<Film> filmsOnShelf(const Store& store) {
    // One pass over the rentals: counting per film would be films × rentals on every keystroke.
    QHash<QString, qint64> out;
    for (const Rental& rental : store.rentals)
        if (isOpen(rental))
            ++out[rental.film];
    QList<Film> onShelf;
    for (const Film& film : activeFilms(store))
        if (out.value(film.id) < film.copies)
            onShelf.append(film);
    return onShelf;
}

bool canDeleteFilm(const Store& store, const QString& id) {
    return inUse(store, id) == 0;
}

bool canDeleteCustomer(const Store& store, const QString& id) {
    return std::none_of(store.rentals.cbegin(), store.rentals.cend(),
                        [&](const Rental& rental) { return rental.customer == id && isOpen(rental); });
}
