// Prints how long the counter takes to read a scanned code on a shop that has run
// for years: the first scan after a change (the lookups built anew) and the scans
// that follow, median and worst per kind of code; then the same scans through the
// program's window (bench_counter_screens.cpp).
#include "BenchShop.h"
#include "Timing.h"
#include "counter/ScanTarget.h"
#include "records/Codes.h"

#include <algorithm>
#include <cstdio>

namespace {

using namespace benchShop;

constexpr int scans = 1000;

// The shop's films and customers; rental i is of film i × 7919 mod filmCount, and
// one in ten still out, holding the next copy of its film. A film's copies never
// run out here: when they would, the rental was returned.
Store counterShop() {
    Store store = yearsOfBusiness();
    store.rentals.clear();
    QList<qint64> out(filmCount, 0);
    for (int i = 0; i < rentalCount; ++i) {
        const int film = int((qint64(i) * 7919) % filmCount);
        const bool open = i % 10 == 0 && out[film] < store.films[film].copies;
        Rental rental = benchShop::rental(i, store.films[film].id, open);
        rental.copy = open ? ++out[film] : 1 + i % store.films[film].copies;
        store.rentals.append(rental);
    }
    return store;
}

template <typename Kind> int count(const QList<ScanTarget>& targets) {
    return int(std::count_if(targets.cbegin(), targets.cend(),
                             [](const ScanTarget& target) { return std::holds_alternative<Kind>(target); }));
}

} // namespace

void screenTimes(const Store& store, const QStringList& returns, const QStringList& shelf); // bench_counter_screens.cpp

int main() {
    const Store store = counterShop();
    std::printf("Shop: %d films, %d customers, %d rentals\n", filmCount, customerCount, rentalCount);

    QList<double> builds;
    for (int i = 0; i < 20; ++i)
        builds.append(millis([&] { const ScanIndex index(store); }));
    std::printf("first scan after a change, lookups built: median %.2f ms, worst %.2f ms\n", median(builds),
                worst(builds));

    // Out tapes, shelf tapes, member cards and film codes, spread over the shop.
    const QList<std::pair<const char*, std::function<QString(int)>>> kinds = {
        {"out tape (return)",
         [&](int i) {
             const Rental& rental = store.rentals.at((i * 10) % rentalCount);
             const Film& film = store.films.at(rental.film.mid(2).toInt());
             return copyCode(film.code, *rental.copy);
         }},
        {"shelf tape (rent)",
         [&](int i) {
             return copyCode(store.films.at((i * 37) % filmCount).code, store.films.at((i * 37) % filmCount).copies);
         }},
        {"member card",
         [&](int i) {
             return customerCardCode((i * 13) % customerCount + 1);
         }},
        {"film code",
         [&](int i) {
             return QStringLiteral("%1").arg((i * 31) % filmCount + 1, 4, 10, QChar(u'0'));
         }},
    };
    ScanReader reader;
    reader.index(store);
    for (const auto& [name, code] : kinds) {
        QList<double> times;
        QList<ScanTarget> targets;
        for (int i = 0; i < scans; ++i) {
            const QString text = code(i);
            times.append(millis([&] { targets.append(reader.read(store, text, now)); }));
        }
        std::printf("%-18s median %.4f ms, worst %.4f ms  (returns %d, rents %d, cards %d, films %d, refused %d)\n",
                    name, median(times), worst(times), count<ScanReturn>(targets), count<ScanRent>(targets),
                    count<ScanCustomer>(targets), count<ScanFilm>(targets), count<RuleRefusal>(targets));
    }

    // The same scans through the running program, 21 of each.
    QStringList returns, shelf;
    for (int i = 0; returns.size() < 21 || shelf.size() < 21; ++i) {
        const QString out = kinds.at(0).second(i * 37), onShelf = kinds.at(1).second(i * 11);
        if (returns.size() < 21 && std::holds_alternative<ScanReturn>(reader.read(store, out, now)))
            returns.append(out);
        if (shelf.size() < 21 && std::holds_alternative<ScanRent>(reader.read(store, onShelf, now)))
            shelf.append(onShelf);
    }
    screenTimes(store, returns, shelf);
    return 0;
}
