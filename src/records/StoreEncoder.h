#pragma once

#include "records/Records.h"

#include <QByteArray>
#include <QList>

// Writes the compact JSON form of a store that is saved again and again while it
// changes a few records at a time. Each list is cut into runs of runLength
// records; the text of a run is kept with the list it was written from and is
// reused while the run's records compare equal, so the save after a rental
// encodes a run or two and copies the rest. The bytes are exactly those of
// encodeStore(store, JSONLayout::compact).
class StoreEncoder {
public:
    // Throws StoreJSONError as encodeStore does, and then forgets every kept text.
    void encode(const Store& store, QByteArray& document);

    static constexpr qsizetype runLength = 256;

private:
    template <typename Record> struct ListText {
        QList<Record> written; // shares the store's list, so keeping it copies nothing
        QList<QByteArray> runs;
    };

    template <typename Record, typename Write>
    static void refresh(ListText<Record>& kept, const QList<Record>& records, Write write);

    ListText<Film>& kept(const QList<Film>&) { return films_; }
    ListText<Customer>& kept(const QList<Customer>&) { return customers_; }
    ListText<Rental>& kept(const QList<Rental>&) { return rentals_; }
    ListText<Entry>& kept(const QList<Entry>&) { return entries_; }

    ListText<Film> films_;
    ListText<Customer> customers_;
    ListText<Rental> rentals_;
    ListText<Entry> entries_;
};
