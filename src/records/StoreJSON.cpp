#include "records/StoreJSON.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <limits>

namespace {

// ---- writing ----------------------------------------------------------------

template <typename T> void putOptional(QJsonObject& object, const char* key, const std::optional<T>& value) {
    if (value)
        object.insert(QLatin1String(key), QJsonValue(*value));
}

void putOptional(QJsonObject& object, const char* key, const std::optional<Instant>& value) {
    if (value)
        object.insert(QLatin1String(key), value->seconds);
}

QJsonObject filmObject(const Film& film) {
    QJsonObject o{{"id", film.id},         {"title", film.title}, {"genre", film.genre},
                  {"copies", film.copies}, {"price", film.price}};
    putOptional(o, "code", film.code);
    putOptional(o, "year", film.year);
    putOptional(o, "deleted", film.deleted);
    putOptional(o, "sinapse", film.sinapse);
    putOptional(o, "originalTitle", film.originalTitle);
    putOptional(o, "release", film.release);
    return o;
}

QJsonObject customerObject(const Customer& customer) {
    QJsonObject o{{"id", customer.id}, {"name", customer.name}, {"phone", customer.phone}};
    putOptional(o, "code", customer.code);
    putOptional(o, "address", customer.address);
    putOptional(o, "city", customer.city);
    putOptional(o, "state", customer.state);
    putOptional(o, "zip", customer.zip);
    putOptional(o, "deleted", customer.deleted);
    return o;
}

QJsonObject rentalObject(const Rental& rental) {
    QJsonObject o{{"id", rental.id},
                  {"film", rental.film},
                  {"customer", rental.customer},
                  {"start", rental.start.seconds},
                  {"due", rental.due.seconds},
                  {"price", rental.price},
                  {"finePerDay", rental.finePerDay}};
    putOptional(o, "returned", rental.returned);
    putOptional(o, "fine", rental.fine);
    putOptional(o, "rewound", rental.rewound);
    putOptional(o, "rewindFee", rental.rewindFee);
    putOptional(o, "copy", rental.copy);
    return o;
}

QJsonObject entryObject(const Entry& entry) {
    return QJsonObject{{"id", entry.id},
                       {"date", entry.date.seconds},
                       {"description", entry.description},
                       {"amount", entry.amount}};
}

template <typename Record, typename Convert> QJsonArray arrayOf(const QList<Record>& records, Convert convert) {
    QJsonArray array;
    for (const Record& record : records)
        array.append(convert(record));
    return array;
}

// ---- reading ----------------------------------------------------------------

// Reads the fields of one JSON object and names the place in every complaint.
class Fields {
public:
    Fields(const QJsonObject& object, QString place) : object_(object), place_(std::move(place)) {}

    QString text(const char* key) const { return requireText(key, require(key)); }
    qint64 integer(const char* key) const { return requireInteger(key, require(key)); }
    Instant date(const char* key) const { return requireDate(key, require(key)); }

    std::optional<QString> optionalText(const char* key) const {
        const QJsonValue v = object_.value(QLatin1String(key));
        return absent(v) ? std::nullopt : std::optional(requireText(key, v));
    }
    std::optional<qint64> optionalInteger(const char* key) const {
        const QJsonValue v = object_.value(QLatin1String(key));
        return absent(v) ? std::nullopt : std::optional(requireInteger(key, v));
    }
    std::optional<bool> optionalBoolean(const char* key) const {
        const QJsonValue v = object_.value(QLatin1String(key));
        if (absent(v))
            return std::nullopt;
        if (!v.isBool())
            wrongType(key, "um valor verdadeiro ou falso");
        return v.toBool();
    }
    std::optional<Instant> optionalDate(const char* key) const {
        const QJsonValue v = object_.value(QLatin1String(key));
        return absent(v) ? std::nullopt : std::optional(requireDate(key, v));
    }

    QJsonArray array(const char* key) const {
        const QJsonValue v = require(key);
        if (!v.isArray())
            wrongType(key, "uma lista");
        return v.toArray();
    }

private:
    static bool absent(const QJsonValue& v) { return v.isUndefined() || v.isNull(); }

    QJsonValue require(const char* key) const {
        const QJsonValue v = object_.value(QLatin1String(key));
        if (v.isUndefined())
            throw StoreJSONError(QStringLiteral("Dados inválidos: falta a chave \"%1\" %2.").arg(QLatin1String(key), place_));
        return v;
    }

    [[noreturn]] void wrongType(const char* key, const char* expected) const {
        throw StoreJSONError(QStringLiteral("Dados inválidos: a chave \"%1\" %2 deve ser %3.")
                                 .arg(QLatin1String(key), place_, QString::fromUtf8(expected)));
    }

    QString requireText(const char* key, const QJsonValue& v) const {
        if (!v.isString())
            wrongType(key, "um texto");
        return v.toString();
    }

    qint64 requireInteger(const char* key, const QJsonValue& v) const {
        if (!v.isDouble())
            wrongType(key, "um número inteiro");
        constexpr qint64 sentinel = std::numeric_limits<qint64>::min();
        const qint64 value = v.toInteger(sentinel);
        // toInteger gives the sentinel for a fraction or a number beyond 64 bits.
        if (value == sentinel && v.toDouble() != double(sentinel))
            wrongType(key, "um número inteiro");
        return value;
    }

    Instant requireDate(const char* key, const QJsonValue& v) const {
        if (!v.isDouble())
            wrongType(key, "uma data em segundos");
        return Instant{v.toDouble()};
    }

    QJsonObject object_;
    QString place_;
};

QString recordPlace(const char* list, qsizetype index) {
    return QStringLiteral("em %1[%2]").arg(QLatin1String(list)).arg(index);
}

template <typename Record, typename Read>
QList<Record> readList(const Fields& document, const char* key, Read read) {
    const QJsonArray array = document.array(key);
    QList<Record> records;
    records.reserve(array.size());
    for (qsizetype i = 0; i < array.size(); ++i) {
        if (!array.at(i).isObject())
            throw StoreJSONError(
                QStringLiteral("Dados inválidos: o item %1 não é um registro.").arg(recordPlace(key, i).mid(3)));
        records.append(read(Fields(array.at(i).toObject(), recordPlace(key, i))));
    }
    return records;
}

Film readFilm(const Fields& f) {
    return Film{f.text("id"),
                f.text("title"),
                f.text("genre"),
                f.integer("copies"),
                f.integer("price"),
                f.optionalInteger("code"),
                f.optionalInteger("year"),
                f.optionalBoolean("deleted"),
                f.optionalText("sinapse"),
                f.optionalText("originalTitle"),
                f.optionalBoolean("release")};
}

Customer readCustomer(const Fields& f) {
    return Customer{f.text("id"),
                    f.text("name"),
                    f.text("phone"),
                    f.optionalInteger("code"),
                    f.optionalText("address"),
                    f.optionalText("city"),
                    f.optionalText("state"),
                    f.optionalText("zip"),
                    f.optionalBoolean("deleted")};
}

Rental readRental(const Fields& f) {
    return Rental{f.text("id"),
                  f.text("film"),
                  f.text("customer"),
                  f.date("start"),
                  f.date("due"),
                  f.optionalDate("returned"),
                  f.integer("price"),
                  f.integer("finePerDay"),
                  f.optionalInteger("fine"),
                  f.optionalBoolean("rewound"),
                  f.optionalInteger("rewindFee"),
                  f.optionalInteger("copy")};
}

Entry readEntry(const Fields& f) {
    return Entry{f.text("id"), f.date("date"), f.text("description"), f.integer("amount")};
}

} // namespace

QByteArray encodeStore(const Store& store, JSONLayout layout) {
    QJsonObject document{{"films", arrayOf(store.films, filmObject)},
                         {"customers", arrayOf(store.customers, customerObject)},
                         {"rentals", arrayOf(store.rentals, rentalObject)},
                         {"entries", arrayOf(store.entries, entryObject)}};
    putOptional(document, "reportRentalBaseline", store.reportRentalBaseline);
    putOptional(document, "locadoraName", store.locadoraName);
    // QJsonObject keeps its keys sorted, so the indented layout is already in key order.
    return QJsonDocument(document).toJson(layout == JSONLayout::compact ? QJsonDocument::Compact
                                                                        : QJsonDocument::Indented);
}

Store decodeStore(const QByteArray& json) {
    QJsonParseError parseError{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError)
        throw StoreJSONError(QStringLiteral("Dados inválidos: o texto não é JSON válido (%1, posição %2).")
                                 .arg(parseError.errorString())
                                 .arg(parseError.offset));
    if (!document.isObject())
        throw StoreJSONError(QStringLiteral("Dados inválidos: o documento JSON não é um objeto."));

    const Fields top(document.object(), QStringLiteral("no documento"));
    Store store;
    store.reportRentalBaseline = top.optionalInteger("reportRentalBaseline");
    store.locadoraName = top.optionalText("locadoraName");
    store.films = readList<Film>(top, "films", readFilm);
    store.customers = readList<Customer>(top, "customers", readCustomer);
    store.rentals = readList<Rental>(top, "rentals", readRental);
    store.entries = readList<Entry>(top, "entries", readEntry);
    return store;
}
