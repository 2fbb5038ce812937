// Prints how long the rows of a list take to follow a keystroke in the search
// field, on a shop that has run for years: the rows computed afresh and through
// the cache the table reads, median and worst of 50 keystrokes per list. No
// window: the rows are the core's.
#include "lists/ListCache.h"
#include "lists/Sections.h"

#include <QElapsedTimer>
#include <algorithm>
#include <climits>
#include <cstdio>

namespace {

constexpr int filmCount = 10000;
constexpr int customerCount = 5000;
constexpr int rentalCount = 100000;
constexpr int keystrokes = 50;
const Instant now{800000000};

Store yearsOfBusiness() {
    const QStringList firstWords = {"Ação", "Aventura", "Cidade", "Fúria", "Noite", "Mistério", "Corações", "Estrela"};
    const QStringList lastWords = {"Perdida", "Selvagem", "do Sertão", "em Chamas", "Proibida", "Final", "de Aço"};
    const QStringList genres = {"Ação, Aventura", "Drama", "Comédia", "Terror", "ficcao cientifica, Ação", "Cult"};
    Store store;
    for (int i = 0; i < filmCount; ++i)
        store.films.append(Film{.id = QStringLiteral("F-%1").arg(i),
                                .title = QStringLiteral("%1 %2 %3")
                                             .arg(firstWords.at(i % firstWords.size()),
                                                  lastWords.at((i / firstWords.size()) % lastWords.size()))
                                             .arg(i / 56 + 1),
                                .genre = genres.at(i % genres.size()),
                                .copies = 1 + i % 4,
                                .price = 550,
                                .code = i + 1,
                                .year = 1970 + i % 30});
    for (int i = 0; i < customerCount; ++i)
        store.customers.append(Customer{.id = QStringLiteral("C-%1").arg(i),
                                        .name = QStringLiteral("João Conceição %1").arg(i),
                                        .phone = "(11) 98765-4321",
                                        .code = i + 1});
    // One rental in ten is still out; a little over half of those are late.
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
        if (!out)
            rental.returned = start.plusSeconds(200000);
        store.rentals.append(rental);
    }
    return store;
}

struct Figures {
    double medianFresh = 0;
    double worstFresh = 0;
    double medianCached = 0;
    double worstCached = 0;
    qsizetype fewestRows = 0;
    qsizetype mostRows = 0;
};

double median(QList<double> values) {
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

double since(const QElapsedTimer& timer) {
    return double(timer.nsecsElapsed()) / 1e6;
}

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
    figures.worstFresh = *std::max_element(fresh.begin(), fresh.end());
    figures.medianCached = median(cached);
    figures.worstCached = *std::max_element(cached.begin(), cached.end());
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
        QElapsedTimer first;
        first.start();
        ListCache().rows(store, filter, QString(), now);
        const double open = since(first);
        const Figures figures = timeKeystrokes(store, filter, list.query);
        std::printf("%-10s %9.1f %12.2f %11.2f %13.2f %12.2f %7lld…%-7lld\n", list.name, open, figures.medianFresh,
                    figures.worstFresh, figures.medianCached, figures.worstCached, (long long)figures.fewestRows,
                    (long long)figures.mostRows);
    }
    return 0;
}
