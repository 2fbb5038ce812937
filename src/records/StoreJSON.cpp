#include "records/StoreJSON.h"

#include "records/JSONReader.h"
#include "records/JSONWriter.h"
#include "records/RecordWriting.h"

// The store is written and read by hand rather than through QJsonDocument: a
// save happens on every change and the document grows with the shop's history,
// so the codec works straight between the records and the bytes without an
// intermediate tree (several times faster at a hundred thousand rentals).

namespace {

// ---- reading ----------------------------------------------------------------

// Collects one record's fields, checking each value's type, and names the record
// in every complaint. Required fields are checked once the object is read.
class RecordReader {
public:
    RecordReader(JSONReader& reader, const char* list, qsizetype index) : reader_(reader), list_(list), index_(index) {}

    void text(QString& field, bool& seen, const char* key) {
        seen = true;
        if (!reader_.readString(field))
            wrongType(key, "um texto");
    }
    void integer(qint64& field, bool& seen, const char* key) {
        seen = true;
        if (!reader_.readInteger(field))
            wrongType(key, "um número inteiro");
    }
    void date(Instant& field, bool& seen, const char* key) {
        seen = true;
        if (!reader_.readNumber(field.seconds))
            wrongType(key, "uma data em segundos");
    }
    void text(std::optional<QString>& field, const char* key) {
        field.reset();
        if (reader_.skipNull())
            return;
        if (!reader_.readString(field.emplace()))
            wrongType(key, "um texto");
    }
    void integer(std::optional<qint64>& field, const char* key) {
        field.reset();
        if (reader_.skipNull())
            return;
        if (!reader_.readInteger(field.emplace()))
            wrongType(key, "um número inteiro");
    }
    void boolean(std::optional<bool>& field, const char* key) {
        field.reset();
        if (reader_.skipNull())
            return;
        if (!reader_.readBoolean(field.emplace()))
            wrongType(key, "um valor verdadeiro ou falso");
    }
    void date(std::optional<Instant>& field, const char* key) {
        field.reset();
        if (reader_.skipNull())
            return;
        if (!reader_.readNumber(field.emplace().seconds))
            wrongType(key, "uma data em segundos");
    }

    void require(bool seen, const char* key) const {
        if (!seen)
            throw StoreJSONError(
                QStringLiteral("Dados inválidos: falta a chave \"%1\" %2.").arg(QLatin1String(key), place()));
    }

private:
    QString place() const {
        return list_ == nullptr ? QStringLiteral("no documento")
                                : QStringLiteral("em %1[%2]").arg(QLatin1String(list_)).arg(index_);
    }
    [[noreturn]] void wrongType(const char* key, const char* expected) const {
        throw StoreJSONError(QStringLiteral("Dados inválidos: a chave \"%1\" %2 deve ser %3.")
                                 .arg(QLatin1String(key), place(), QString::fromUtf8(expected)));
    }

    JSONReader& reader_;
    const char* list_;
    qsizetype index_;
};

Film readFilm(JSONReader& reader, RecordReader& r) {
    Film f;
    bool id = false, title = false, genre = false, copies = false, price = false;
    reader.readObject([&](std::string_view key) {
        if (key == "id")
            r.text(f.id, id, "id");
        else if (key == "title")
            r.text(f.title, title, "title");
        else if (key == "genre")
            r.text(f.genre, genre, "genre");
        else if (key == "copies")
            r.integer(f.copies, copies, "copies");
        else if (key == "price")
            r.integer(f.price, price, "price");
        else if (key == "code")
            r.integer(f.code, "code");
        else if (key == "year")
            r.integer(f.year, "year");
        else if (key == "deleted")
            r.boolean(f.deleted, "deleted");
        else if (key == "sinapse")
            r.text(f.sinapse, "sinapse");
        else if (key == "originalTitle")
            r.text(f.originalTitle, "originalTitle");
        else if (key == "release")
            r.boolean(f.release, "release");
        else
            reader.skipValue();
    });
    r.require(id, "id");
    r.require(title, "title");
    r.require(genre, "genre");
    r.require(copies, "copies");
    r.require(price, "price");
    return f;
}

Customer readCustomer(JSONReader& reader, RecordReader& r) {
    Customer c;
    bool id = false, name = false, phone = false;
    reader.readObject([&](std::string_view key) {
        if (key == "id")
            r.text(c.id, id, "id");
        else if (key == "name")
            r.text(c.name, name, "name");
        else if (key == "phone")
            r.text(c.phone, phone, "phone");
        else if (key == "code")
            r.integer(c.code, "code");
        else if (key == "address")
            r.text(c.address, "address");
        else if (key == "city")
            r.text(c.city, "city");
        else if (key == "state")
            r.text(c.state, "state");
        else if (key == "zip")
            r.text(c.zip, "zip");
        else if (key == "deleted")
            r.boolean(c.deleted, "deleted");
        else
            reader.skipValue();
    });
    r.require(id, "id");
    r.require(name, "name");
    r.require(phone, "phone");
    return c;
}

Rental readRental(JSONReader& reader, RecordReader& r) {
    Rental x;
    bool id = false, film = false, customer = false, start = false, due = false, price = false, finePerDay = false;
    reader.readObject([&](std::string_view key) {
        if (key == "id")
            r.text(x.id, id, "id");
        else if (key == "film")
            r.text(x.film, film, "film");
        else if (key == "customer")
            r.text(x.customer, customer, "customer");
        else if (key == "start")
            r.date(x.start, start, "start");
        else if (key == "due")
            r.date(x.due, due, "due");
        else if (key == "returned")
            r.date(x.returned, "returned");
        else if (key == "price")
            r.integer(x.price, price, "price");
        else if (key == "finePerDay")
            r.integer(x.finePerDay, finePerDay, "finePerDay");
        else if (key == "fine")
            r.integer(x.fine, "fine");
        else if (key == "rewound")
            r.boolean(x.rewound, "rewound");
        else if (key == "rewindFee")
            r.integer(x.rewindFee, "rewindFee");
        else if (key == "copy")
            r.integer(x.copy, "copy");
        else
            reader.skipValue();
    });
    r.require(id, "id");
    r.require(film, "film");
    r.require(customer, "customer");
    r.require(start, "start");
    r.require(due, "due");
    r.require(price, "price");
    r.require(finePerDay, "finePerDay");
    return x;
}

Entry readEntry(JSONReader& reader, RecordReader& r) {
    Entry e;
    bool id = false, date = false, description = false, amount = false;
    reader.readObject([&](std::string_view key) {
        if (key == "id")
            r.text(e.id, id, "id");
        else if (key == "date")
            r.date(e.date, date, "date");
        else if (key == "description")
            r.text(e.description, description, "description");
        else if (key == "amount")
            r.integer(e.amount, amount, "amount");
        else
            reader.skipValue();
    });
    r.require(id, "id");
    r.require(date, "date");
    r.require(description, "description");
    r.require(amount, "amount");
    return e;
}

template <typename Record, typename Read>
void readList(JSONReader& reader, QList<Record>& records, bool& seen, const char* key, Read read) {
    seen = true;
    records.clear();
    const bool isArray = reader.readArray([&](qsizetype index) {
        if (!reader.atObject())
            throw StoreJSONError(
                QStringLiteral("Dados inválidos: o item %1[%2] não é um registro.").arg(QLatin1String(key)).arg(index));
        RecordReader fields(reader, key, index);
        records.append(read(reader, fields));
    });
    if (!isArray)
        throw StoreJSONError(
            QStringLiteral("Dados inválidos: a chave \"%1\" no documento deve ser uma lista.").arg(QLatin1String(key)));
}

} // namespace

void encodeStore(const Store& store, JSONLayout layout, QByteArray& buffer) {
    JSONWriter w(buffer, layout == JSONLayout::sortedIndented, expectedDocumentBytes(store));
    writeDocument(w, store, [](JSONWriter& w, const auto& key, const auto& records, auto write) {
        w.key(key);
        w.beginArray();
        for (const auto& record : records) {
            w.element();
            write(w, record);
        }
        w.endArray();
    });
}

QByteArray encodeStore(const Store& store, JSONLayout layout) {
    QByteArray json;
    encodeStore(store, layout, json);
    return json;
}

Store decodeStore(const QByteArray& json) {
    // A text editor may have saved the legacy file with a byte-order mark in front.
    QByteArrayView text(json);
    if (text.startsWith("\xEF\xBB\xBF"))
        text = text.sliced(3);
    JSONReader reader(text);
    if (!reader.atObject()) {
        reader.checkValue(); // a syntax error names itself first
        throw StoreJSONError(QStringLiteral("Dados inválidos: o documento JSON não é um objeto."));
    }
    Store store;
    RecordReader top(reader, nullptr, 0);
    bool films = false, customers = false, rentals = false, entries = false;
    reader.readObject([&](std::string_view key) {
        if (key == "films")
            readList(reader, store.films, films, "films", readFilm);
        else if (key == "customers")
            readList(reader, store.customers, customers, "customers", readCustomer);
        else if (key == "rentals")
            readList(reader, store.rentals, rentals, "rentals", readRental);
        else if (key == "entries")
            readList(reader, store.entries, entries, "entries", readEntry);
        else if (key == "reportRentalBaseline")
            top.integer(store.reportRentalBaseline, "reportRentalBaseline");
        else if (key == "locadoraName")
            top.text(store.locadoraName, "locadoraName");
        else
            reader.skipValue();
    });
    reader.finish();
    top.require(films, "films");
    top.require(customers, "customers");
    top.require(rentals, "rentals");
    top.require(entries, "entries");
    return store;
}
