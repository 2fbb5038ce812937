// Prints how long the rows of a list take to follow a keystroke in the search
// field, on a shop that has run for years: the rows computed afresh and through
// the cache the table reads, median and worst of 50 keystrokes per list. No
// window: the rows are the core's.
#include "BenchShop.h"
#include "Timing.h"
#include "lists/ListCache.h"
#include "lists/Sections.h"

#include <QElapsedTimer>
#include <algorithm>
#include <climits>
#include <cstdio>

namespace {

using namespace benchShop;

constexpr int keystrokes = 50;

struct Figures {
    double medianFresh = 0;
    double worstFresh = 0;
    double medianCached = 0;
    double worstCached = 0;
    qsizetype fewestRows = 0;
    qsizetype mostRows = 0;
};

// Types the query a letter at a time, then takes it back, until 50 keys were pressed.
Figures timeKeystrokes(const Store& store, const ListFilter& filter, const QString& query) {
    ListCache cache;
    cache.rows(store, filter, QString(), now);
    QList<double> fresh;
    QList<double> cached;
    Figures figures{.fewestRows = LLONG_MAX};
    qsizetype typed = 0;
    bool typing = true;
    for (int k = 0; k < keystrokes; ++k) {
        typed += typing ? 1 : -1;
        const QString text = query.left(typed);
        QElapsedTimer timer;
        timer.start();
        const qsizetype count = listRows(store, filter, text, now).size();
        fresh.append(since(timer));
        timer.restart();
        cache.rows(store, filter, text, now);
        cached.append(since(timer));
        figures.fewestRows = std::min(figures.fewestRows, count);
        figures.mostRows = std::max(figures.mostRows, count);
        if (typed == query.size())
            typing = false;
        else if (typed == 0)
            typing = true;
    }
    figures.medianFresh = median(fresh);
    figures.worstFresh = worst(fresh);
    figures.medianCached = median(cached);
    figures.worstCached = worst(cached);
    return figures;
}

} // namespace

int main() {
    const Store store = yearsOfBusiness();
    std::printf("%d films, %d customers, %d rentals (%d out); %d keystrokes per list\n", filmCount, customerCount,
                rentalCount, rentalCount / 10, keystrokes);
    std::printf("%-10s %9s %12s %11s %13s %12s %15s\n", "list", "first ms", "fresh med ms", "fresh max",
                "cached med ms", "cached max", "rows shown");
    const struct {
        const char* name;
        int section;
        QString query;
    } lists[] = {{"films", Section::films, QStringLiteral("ação perdida 1")},
                 {"rented", Section::rented, QStringLiteral("cod-012")}};
    for (const auto& list : lists) {
        const ListFilter filter{.section = list.section};
        const double open = millis([&] { ListCache().rows(store, filter, QString(), now); });
        const Figures figures = timeKeystrokes(store, filter, list.query);
        std::printf("%-10s %9.1f %12.2f %11.2f %13.2f %12.2f %7lld…%-7lld\n", list.name, open, figures.medianFresh,
                    figures.worstFresh, figures.medianCached, figures.worstCached, (long long)figures.fewestRows,
                    (long long)figures.mostRows);
    }
    return 0;
}
