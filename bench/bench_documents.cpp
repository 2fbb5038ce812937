// Prints how long the counter documents take on a shop that has run for years:
// the closing of one day (target under 20 ms) and the overdue notices page
// (target under 100 ms), medians of repeated runs.
#include "BenchShop.h"
#include "Timing.h"
#include "print/OverdueNotices.h"
#include "records/CashDay.h"
#include "records/DateText.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>

namespace {

using namespace benchShop;

// The shop's rentals, each of which wrote its "Locação: " entry, and every return
// one more (a fine or a rewind fee).
Store withCashBook(Store store) {
    for (const Rental& rental : std::as_const(store.rentals)) {
        const QString title = store.films.at(rental.film.mid(2).toInt()).title;
        store.entries.append(Entry{rental.id + "-e", rental.start, "Locação: " + title + " / João", 550});
        if (rental.returned) {
            const bool late = *rental.returned > rental.due;
            store.entries.append(Entry{rental.id + "-r", *rental.returned,
                                       late ? "Multa: " + title : "Taxa de rebobinagem: " + title, late ? 300 : 100});
        }
    }
    // The book is written in time order of the writes, not of the rentals.
    std::stable_sort(store.entries.begin(), store.entries.end(),
                     [](const Entry& a, const Entry& b) { return a.date < b.date; });
    return store;
}

} // namespace

int main() {
    const Store store = withCashBook(yearsOfBusiness());
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
