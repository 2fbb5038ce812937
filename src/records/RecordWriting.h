#pragma once

#include "records/JSONWriter.h"
#include "records/Records.h"

// Each record as one JSON object, and the document around the four lists: the
// pieces both the plain encoding and StoreEncoder put together, so the two
// write the same bytes.

void writeFilm(JSONWriter& w, const Film& f);
void writeCustomer(JSONWriter& w, const Customer& c);
void writeRental(JSONWriter& w, const Rental& r);
void writeEntry(JSONWriter& w, const Entry& e);

// A first guess at the document's size, so the buffer rarely grows while writing.
qsizetype expectedDocumentBytes(const Store& store);

// The members in byte order. writeList(w, key, records, writeRecord) writes the
// key and the array of one list.
template <typename WriteList> void writeDocument(JSONWriter& w, const Store& store, WriteList&& writeList) {
    w.beginObject();
    writeList(w, R"(,"customers":)", store.customers, writeCustomer);
    writeList(w, R"(,"entries":)", store.entries, writeEntry);
    writeList(w, R"(,"films":)", store.films, writeFilm);
    w.member(R"(,"locadoraName":)", store.locadoraName);
    writeList(w, R"(,"rentals":)", store.rentals, writeRental);
    w.member(R"(,"reportRentalBaseline":)", store.reportRentalBaseline);
    w.endObject();
    w.finish();
}
