// Prints how long the counter takes to read a scanned code on a shop that has run
// for years: the first scan after a change (the lookups built anew) and the scans
// that follow, median and worst per kind of code; then the same scans through the
// program's window (bench_counter_screens.cpp).
#include "counter/ScanTarget.h"
#include "records/Codes.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>

namespace {

constexpr int filmCount = 10000;
constexpr int customerCount = 5000;
constexpr int rentalCount = 100000;
constexpr int scans = 1000;
const Instant now{800000000};

// One rental in ten is still out, holding the next copy of its film; over half of
// those are late. A film's copies never run out here: when they would, the rental
// was returned.
Store yearsOfBusiness() {
    Store store;
    for (int i = 0; i < filmCount; ++i)
        store.films.append(Film{.id = QStringLiteral("F-%1").arg(i),
                                .title = QStringLiteral("Filme %1").arg(i),
                                .genre = QStringLiteral("Drama"),
                                .copies = 1 + i % 4,
                                .price = 550,
                                .code = i + 1,
                                .release = i % 5 == 0});
    for (int i = 0; i < customerCount; ++i)
        store.customers.append(Customer{.id = QStringLiteral("C-%1").arg(i),
                                        .name = QStringLiteral("João Conceição %1").arg(i),
                                        .phone = "(11) 98765-4321",
                                        .code = i + 1});
    QList<qint64> out(filmCount, 0);
    for (int i = 0; i < rentalCount; ++i) {
        const int film = int((qint64(i) * 7919) % filmCount);
        const bool open = i % 10 == 0 && out[film] < store.films[film].copies;
        const Instant start{open ? now.seconds - (i % 1000) * 600.0
                                 : now.seconds - 400000.0 - (rentalCount - i) * 600.0};
        Rental rental{.id = QStringLiteral("R-%1").arg(i),
                      .film = store.films[film].id,
                      .customer = QStringLiteral("C-%1").arg(i % customerCount),
                      .start = start,
                      .due = start.plusSeconds(259200),
                      .price = 550,
                      .finePerDay = 300,
                      .copy = open ? ++out[film] : 1 + i % store.films[film].copies};
        if (!open)
            rental.returned = start.plusSeconds(200000);
        store.rentals.append(rental);
    }
    return store;
}

double median(QList<double> values) {
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

double worst(const QList<double>& values) {
    return *std::max_element(values.cbegin(), values.cend());
}

template <typename Kind> int count(const QList<ScanTarget>& targets) {
    return int(std::count_if(targets.cbegin(), targets.cend(),
                             [](const ScanTarget& target) { return std::holds_alternative<Kind>(target); }));
}

} // namespace

void screenTimes(const Store& store, const QStringList& returns, const QStringList& shelf); // bench_counter_screens.cpp

int main() {
    const Store store = yearsOfBusiness();
    std::printf("Shop: %d films, %d customers, %d rentals\n", filmCount, customerCount, rentalCount);

    QList<double> builds;
    for (int i = 0; i < 20; ++i) {
        QElapsedTimer timer;
        timer.start();
        const ScanIndex index(store);
        builds.append(timer.nsecsElapsed() / 1e6);
    }
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
            QElapsedTimer timer;
            timer.start();
            targets.append(reader.read(store, text, now));
            times.append(timer.nsecsElapsed() / 1e6);
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
