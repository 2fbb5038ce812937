#pragma once

#include "records/Records.h"

#include <optional>

inline constexpr qint64 rewindFee = 100; // R$ 1,00 for a tape returned unrewound

Instant automaticDue(Instant start, bool release); // +86 400 s for a release, else +259 200 s
std::optional<qint64> freeCopy(const Store& store, const Film& film, std::optional<qint64> requested = std::nullopt);
qint64 overdue(const Rental& rental, Instant now); // whole calendar days late, never negative
// Throws FilmCSVError("Esta fita já foi devolvida.") for an unknown or returned rental.
Store returnedStore(const Store& store, const QString& id, bool rewound, Instant now);
qint64 inUse(const Store& store, const QString& film);
QList<Film> filmsOnShelf(const Store& store); // active films with at least one copy not rented out
bool canDeleteFilm(const Store& store, const QString& id);
bool canDeleteCustomer(const Store& store, const QString& id);
