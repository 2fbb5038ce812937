#pragma once

#include "records/Records.h"

// Stable: alphabetical (pt_BR, case and accents ignored) then by code, or by code alone.
QList<Film> orderedFilms(QList<Film> films, bool alphabetical);
QList<Customer> orderedCustomers(QList<Customer> customers, bool alphabetical);
