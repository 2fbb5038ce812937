#include "records/Codes.h"

#include "records/IntegerText.h"

#include <QSet>
#include <limits>

namespace {

QString padded(qint64 number, int width) {
    return QString::asprintf("%0*lld", width, static_cast<long long>(number));
}

// One walk for films and customers alike: the first holder of a valid code
// keeps it, everyone else is numbered after the highest code present.
template <typename Record> void assignCodes(QList<Record>& records) {
    qint64 highest = 0;
    QSet<qint64> present;
    for (const Record& record : records) {
        highest = std::max(highest, record.code.value_or(0));
        if (record.code)
            present.insert(*record.code);
    }

    // Only a code at the very top of the range makes the numbering wrap to 1;
    // it then skips every code present so no later record loses its own.
    const auto after = [](qint64 code) {
        return code == std::numeric_limits<qint64>::max() ? 1 : code + 1;
    };
    qint64 next = after(highest);
    QSet<qint64> taken;
    for (Record& record : records) {
        if (record.code && *record.code > 0 && !taken.contains(*record.code)) {
            taken.insert(*record.code);
            continue;
        }
        while (taken.contains(next) || present.contains(next))
            next = after(next);
        record.code = next;
        taken.insert(next);
        next = after(next);
    }
}

} // namespace

QString inventoryCode(std::optional<qint64> code) {
    return QStringLiteral("COD-") + padded(code.value_or(0), 4);
}

QString filmCode(const Film& film) {
    return padded(film.code.value_or(0), 4);
}

QString copyCode(std::optional<qint64> filmCode, qint64 copy) {
    return inventoryCode(filmCode) + u'-' + padded(copy, 3);
}

QString customerCode(const Customer& customer) {
    return padded(customer.code.value_or(0), 4);
}

QString customerCardCode(std::optional<qint64> code) {
    return QStringLiteral("CLI-") + padded(code.value_or(0), 4);
}

std::optional<qint64> numericCode(const QString& text) {
    const QString code = text.trimmed().toUpper();
    if (code.startsWith(u"COD-") || code.startsWith(u"CLI-")) {
        // A copy code "COD-0001-002" reads as its film's code.
        const QStringList pieces = code.split(u'-', Qt::SkipEmptyParts);
        return wholeInteger(pieces.size() > 1 ? QStringView(pieces[1]) : QStringView());
    }
    return wholeInteger(code);
}

Store assigningFilmCodes(Store store) {
    assignCodes(store.films);
    return store;
}

Store assigningCustomerCodes(Store store) {
    assignCodes(store.customers);
    return store;
}
