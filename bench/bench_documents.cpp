// Prints how long the counter documents take on a shop that has run for years:
// the closing of one day (target under 20 ms) and the overdue notices page
// (target under 100 ms), medians of repeated runs.
#include "print/OverdueNotices.h"
#include "records/CashDay.h"
#include "records/DateText.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>

namespace {

constexpr int filmCount = 10000;
constexpr int customerCount = 5000;
constexpr int rentalCount = 100000;
const Instant now{800000000};

// One rental in ten still out, a little over half of those late; every rental
// wrote its "Locação: " entry and every return one more (a fine or a rewind fee).
Store yearsOfBusiness() {
    Store store;
    store.locadoraName = QStringLiteral("Vídeo Locadora São João");
    for (int i = 0; i < filmCount; ++i)
        store.films.append(Film{.id = QStringLiteral("F-%1").arg(i),
                                .title = QStringLiteral("Ação na Cidade Perdida %1").arg(i),
                                .genre = "Ação",
                                .copies = 1 + i % 4,
                                .price = 550,
                                .code = i + 1});
    for (int i = 0; i < customerCount; ++i)
        store.customers.append(Customer{.id = QStringLiteral("C-%1").arg(i),
                                        .name = QStringLiteral("João Conceição %1").arg(i),
                                        .phone = "(11) 98765-4321",
                                        .code = i + 1,
                                        .address = "Rua das Flores, 123",
                                        .city = "São Paulo",
                                        .state = "SP",
                                        .zip = "01000-000"});
    for (int i = 0; i < rentalCount; ++i) {
        const bool out = i % 10 == 0;
        const Instant start{out ? now.seconds - (i % 1000) * 600.0
                                : now.seconds - 400000.0 - (rentalCount - i) * 600.0};
        Rental rental{.id = QStringLiteral("R-%1").arg(i),
                      .film = QStringLiteral("F-%1").arg(i % filmCount),
                      .customer = QStringLiteral("C-%1").arg(i % customerCount),
                      .start = start,
                      .due = start.plusSeconds(259200),
                      .price = 550,
                      .finePerDay = 300};
        const QString title = QStringLiteral("Ação na Cidade Perdida %1").arg(i % filmCount);
        store.entries.append(Entry{QStringLiteral("E-%1").arg(i), start, "Locação: " + title + " / João", 550});
        if (!out) {
            rental.returned = start.plusSeconds(i % 3 == 0 ? 345600 : 200000);
            store.entries.append(Entry{QStringLiteral("E-%1-r").arg(i), *rental.returned,
                                       i % 3 == 0 ? "Multa: " + title : "Taxa de rebobinagem: " + title,
                                       i % 3 == 0 ? 300 : 100});
        }
        store.rentals.append(rental);
    }
    // The book is written in time order of the writes, not of the rentals.
    std::stable_sort(store.entries.begin(), store.entries.end(),
                     [](const Entry& a, const Entry& b) { return a.date < b.date; });
    return store;
}

template <typename F> double medianMillis(int runs, F&& work) {
    QList<double> times;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.append(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[runs / 2];
}

} // namespace

int main() {
    const Store store = yearsOfBusiness();
    const QDate day = calendar::localDate(now.plusSeconds(-86400 * 200));

    qsizetype dayEntries = 0;
    // What the closing dialog needs: the figures and their text.
    const double closingMs = medianMillis(21, [&] {
        const CashDay closing = cashDay(store, day);
        dayEntries = closing.entries.size() + cashDayText(closing).size() * 0;
    });
    qsizetype pageBytes = 0, lateTapes = 0;
    const double noticesMs = medianMillis(7, [&] { pageBytes = overdueNoticesPage(store, now).size(); });
    const QList<OverdueNotice> notices = overdueNotices(store, now);
    for (const OverdueNotice& notice : notices)
        lateTapes += notice.tapes.size();

    std::printf("%d rentals, %lld cash entries\n", rentalCount, static_cast<long long>(store.entries.size()));
    std::printf("closing of %s (%lld entries): %.2f ms (target < 20 ms)\n", qPrintable(day.toString(u"dd/MM/yyyy")),
                static_cast<long long>(dayEntries), closingMs);
    std::printf("overdue notices (%lld late tapes of %lld customers, %lld characters): %.2f ms (target < 100 ms)\n",
                static_cast<long long>(lateTapes), static_cast<long long>(notices.size()),
                static_cast<long long>(pageBytes), noticesMs);
    std::printf("RESULT closing_ms=%.2f notices_ms=%.2f\n", closingMs, noticesMs);
    return 0;
}
