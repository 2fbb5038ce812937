#pragma once

#include "records/RentalRules.h"

// One tape of a rental of several: a film, and the copy scanned or typed (empty:
// the lowest free copy, as a single rental takes it).
struct BasketTape {
    QString film;
    std::optional<qint64> copy;
};

struct BasketRequest {
    QList<BasketTape> tapes;
    QString customer;
    Instant start;
    qint64 finePerDay = 0;
};

// Every tape rented as a single rental would rent it (one Rental and one "Locação: "
// entry each, each due by its own film's category), or none: the refusal of the
// first tape that cannot be rented names it by copy code and title.
Ruled<Store> basketRentedStore(const Store& store, const BasketRequest& request);

// A line of the basket under the rental form.
struct BasketLine {
    QString copyCode; // "COD-0001-002", or "COD-0001" when no copy was asked for
    QString title;
    Instant due;
    qint64 price = 0;
};
// Lines in basket order; a tape whose film is not in the store is left out.
QList<BasketLine> basketLines(const Store& store, const QList<BasketTape>& tapes, Instant start);
qint64 basketTotal(const QList<BasketLine>& lines);
