#include "counter/Basket.h"

#include "records/Codes.h"

#include <algorithm>

namespace {

const Film* findFilm(const Store& store, const QString& id) {
    const auto found =
        std::find_if(store.films.cbegin(), store.films.cend(), [&](const Film& film) { return film.id == id; });
    return found == store.films.cend() ? nullptr : &*found;
}

QString tapeCode(const Film& film, const BasketTape& tape) {
    return tape.copy ? copyCode(film.code, *tape.copy) : inventoryCode(film.code);
}

bool customerMissing(const Store& store, const QString& id) {
    return std::none_of(store.customers.cbegin(), store.customers.cend(), [&](const Customer& customer) {
        return customer.id == id && !customer.deleted.value_or(false);
    });
}

} // namespace

Ruled<Store> basketRentedStore(const Store& store, const BasketRequest& request) {
    if (request.tapes.isEmpty() || customerMissing(store, request.customer))
        return RuleRefusal{
            QStringLiteral("Selecione filme e cliente"),
            QStringLiteral("Escolha um filme disponível e um cliente cadastrado nas listas de pesquisa.")};
    // Each tape sees the tapes before it as rented, so one copy twice fails the second time.
    Store renting = store;
    for (const BasketTape& tape : request.tapes) {
        const Film* film = findFilm(renting, tape.film);
        const RentalRequest single{.film = tape.film,
                                   .customer = request.customer,
                                   .copy = tape.copy,
                                   .start = request.start,
                                   .due = automaticDue(request.start, film && film->release.value_or(false)),
                                   .finePerDay = request.finePerDay};
        Ruled<Store> rented = rentedStore(renting, single);
        if (const RuleRefusal* refusal = std::get_if<RuleRefusal>(&rented)) {
            if (!film)
                return *refusal;
            return RuleRefusal{QStringLiteral("Exemplar indisponível"),
                               QStringLiteral("A fita %1 — %2 já está alugada ou não existe; nenhuma fita foi alugada.")
                                   .arg(tapeCode(*film, tape), film->title)};
        }
        renting = std::get<Store>(std::move(rented));
    }
    return renting;
}

QList<BasketLine> basketLines(const Store& store, const QList<BasketTape>& tapes, Instant start) {
    QList<BasketLine> lines;
    for (const BasketTape& tape : tapes) {
        if (const Film* film = findFilm(store, tape.film))
            lines.append(BasketLine{.copyCode = tapeCode(*film, tape),
                                    .title = film->title,
                                    .due = automaticDue(start, film->release.value_or(false)),
                                    .price = film->price});
    }
    return lines;
}

qint64 basketTotal(const QList<BasketLine>& lines) {
    qint64 total = 0;
    for (const BasketLine& line : lines)
        total += line.price;
    return total;
}
