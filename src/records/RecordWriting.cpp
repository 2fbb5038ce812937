#include "records/RecordWriting.h"

#include "records/JSONWriter.h"

// Keys are written in byte order in both layouts, so the indented layout is the
// sorted one the backup wants and the compact layout is its whitespace-free twin.

void writeFilm(JSONWriter& w, const Film& f) {
    w.beginObject();
    w.member(R"(,"code":)", f.code);
    w.member(R"(,"copies":)", f.copies);
    w.member(R"(,"deleted":)", f.deleted);
    w.member(R"(,"genre":)", f.genre);
    w.member(R"(,"id":)", f.id);
    w.member(R"(,"originalTitle":)", f.originalTitle);
    w.member(R"(,"price":)", f.price);
    w.member(R"(,"release":)", f.release);
    w.member(R"(,"sinapse":)", f.sinapse);
    w.member(R"(,"title":)", f.title);
    w.member(R"(,"year":)", f.year);
    w.endObject();
}

void writeCustomer(JSONWriter& w, const Customer& c) {
    w.beginObject();
    w.member(R"(,"address":)", c.address);
    w.member(R"(,"city":)", c.city);
    w.member(R"(,"code":)", c.code);
    w.member(R"(,"deleted":)", c.deleted);
    w.member(R"(,"id":)", c.id);
    w.member(R"(,"name":)", c.name);
    w.member(R"(,"phone":)", c.phone);
    w.member(R"(,"state":)", c.state);
    w.member(R"(,"zip":)", c.zip);
    w.endObject();
}

void writeRental(JSONWriter& w, const Rental& r) {
    w.beginObject();
    w.member(R"(,"copy":)", r.copy);
    w.member(R"(,"customer":)", r.customer);
    w.member(R"(,"due":)", r.due);
    w.member(R"(,"film":)", r.film);
    w.member(R"(,"fine":)", r.fine);
    w.member(R"(,"finePerDay":)", r.finePerDay);
    w.member(R"(,"id":)", r.id);
    w.member(R"(,"price":)", r.price);
    w.member(R"(,"returned":)", r.returned);
    w.member(R"(,"rewindFee":)", r.rewindFee);
    w.member(R"(,"rewound":)", r.rewound);
    w.member(R"(,"start":)", r.start);
    w.endObject();
}

void writeEntry(JSONWriter& w, const Entry& e) {
    w.beginObject();
    w.member(R"(,"amount":)", e.amount);
    w.member(R"(,"date":)", e.date);
    w.member(R"(,"description":)", e.description);
    w.member(R"(,"id":)", e.id);
    w.endObject();
}

qsizetype expectedDocumentBytes(const Store& store) {
    return 256 + store.films.size() * 320 + store.customers.size() * 240 + store.rentals.size() * 360 +
           store.entries.size() * 140;
}
