#pragma once

#include "counter/Basket.h"
#include "records/Codes.h"
#include "records/DateText.h"
#include "records/MoneyText.h"

// How the rental screen's lists show a film, a customer and a tape: its code first,
// then what the operator reads across, with the same dash between the parts.
namespace RentalRows {

inline const QString separator = QStringLiteral(" — ");

inline QString film(const Film& film) {
    return filmCode(film) + separator + film.title + separator + money(film.price);
}

inline QString customer(const Customer& customer) {
    return customerCode(customer) + separator + customer.name + separator + customer.phone;
}

inline QString tape(const BasketLine& line) {
    return line.copyCode + separator + line.title + separator + dateTimeText(line.due) + separator + money(line.price);
}

} // namespace RentalRows
