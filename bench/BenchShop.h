#pragma once

#include "records/Records.h"

// The shop the benchmarks measure: years of business at one counter.
namespace benchShop {

constexpr int filmCount = 10000;
constexpr int customerCount = 5000;
constexpr int rentalCount = 100000;
inline const Instant now{800000000};

// Titles made of a few words, so a search keystroke matches many films or few;
// every fifth film a new release.
Film film(int i);
Customer customer(int i);
// Rental i: still out (started in the last week, late from the fourth day) or
// returned long ago, a third of those after their due date.
Rental rental(int i, const QString& film, bool out);

// Every film and customer, and rental i of film i mod filmCount, one in ten still out.
Store yearsOfBusiness();

} // namespace benchShop
