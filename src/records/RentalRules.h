#pragma once

#include "records/Records.h"

#include <optional>
#include <variant>

inline constexpr qint64 rewindFee = 100; // R$ 1,00 for a tape returned unrewound

// A rule's refusal, ready for alert(title, text). An empty title is a silent refusal:
// the screen stays as it is and says nothing.
struct RuleRefusal {
    QString title;
    QString text;
    bool silent() const { return title.isEmpty(); }
};
template <typename T> using Ruled = std::variant<T, RuleRefusal>;

// The one definition of an open rental (not yet returned) and of a late one (open,
// its due instant passed).
bool isOpen(const Rental& rental);
bool isLate(const Rental& rental, Instant now);

Instant automaticDue(Instant start, bool release); // +86 400 s for a release, else +259 200 s
std::optional<qint64> freeCopy(const Store& store, const Film& film, std::optional<qint64> requested = std::nullopt);
qint64 overdue(const Rental& rental, Instant now); // whole calendar days late, never negative
// days × finePerDay, saturating at the ends of the 64-bit range instead of overflowing.
qint64 fineFor(qint64 days, qint64 finePerDay);
qint64 fineSoFar(const Rental& rental, Instant now); // the fine a return at now would charge

// The copy number of a copy code "COD-0001-002": the last of three or more pieces,
// plain decimal digits only; nothing for a film code or anything else.
std::optional<qint64> requestedCopy(const QString& code);

// One copy rented: the Rental and its "Locação: " entry, or the refusal. copy empty
// means the lowest free copy; due is the caller's (automaticDue for the film's category).
struct RentalRequest {
    QString film;
    QString customer;
    std::optional<qint64> copy;
    Instant start;
    Instant due;
    qint64 finePerDay = 0;
};
Ruled<Store> rentedStore(const Store& store, const RentalRequest& request);
// The first check of a rental: both chosen, neither removed, a copy of the film free.
std::optional<RuleRefusal> rentalChoiceRefusal(const Store& store, const QString& film, const QString& customer);

// A manual cash-book line typed by the operator: description, "ENTRADA"/"SAÍDA"
// (any case or accents) and an amount text. An empty description or an amount that
// is unreadable or not positive is a silent refusal.
Ruled<Store> cashEntryStore(const Store& store, const QString& description, const QString& kind, const QString& amount,
                            Instant now);
// Throws FilmCSVError("Esta fita já foi devolvida.") for an unknown or returned rental.
Store returnedStore(const Store& store, const QString& id, bool rewound, Instant now);
qint64 inUse(const Store& store, const QString& film);
QList<Film> filmsOnShelf(const Store& store); // active films with at least one copy not rented out
bool canDeleteFilm(const Store& store, const QString& id);
bool canDeleteCustomer(const Store& store, const QString& id);
