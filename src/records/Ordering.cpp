#include "records/Ordering.h"

#include "records/Search.h"

#include <QCollator>
#include <algorithm>
#include <vector>

namespace {

// The collator compares folded keys: on its own it still tells "Ação" from
// "acao", and those must fall through to the code.
template <typename Record, typename Text>
QList<Record> ordered(const QList<Record>& records, bool alphabetical, Text text) {
    struct Keyed {
        QString key;
        qint64 code;
        qsizetype index;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(records.size());
    for (qsizetype i = 0; i < records.size(); ++i)
        keyed.push_back({alphabetical ? foldedKey(text(records[i])) : QString(), records[i].code.value_or(0), i});

    const QCollator collator(QLocale(QLocale::Portuguese, QLocale::Brazil));
    std::stable_sort(keyed.begin(), keyed.end(), [&](const Keyed& a, const Keyed& b) {
        if (alphabetical) {
            const int order = collator.compare(a.key, b.key);
            if (order != 0)
                return order < 0;
        }
        return a.code < b.code;
    });

    QList<Record> result;
    result.reserve(records.size());
    for (const Keyed& k : keyed)
        result.append(records[k.index]);
    return result;
}

} // namespace

QList<Film> orderedFilms(QList<Film> films, bool alphabetical) {
    return ordered(films, alphabetical, [](const Film& film) { return film.title; });
}

QList<Customer> orderedCustomers(QList<Customer> customers, bool alphabetical) {
    return ordered(customers, alphabetical, [](const Customer& customer) { return customer.name; });
}
