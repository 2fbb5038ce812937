#include "modes/SelfTestChecks.h"

#include "records/RentalRules.h"
#include "storage/LocalDatabase.h"

#include <QDateTime>

namespace selfTest {

Instant localInstant(int year, int month, int day, int hour, int minute) {
    return Instant::fromDateTime(QDateTime(QDate(year, month, day), QTime(hour, minute)));
}

Film film(const QString& id, const QString& title, std::optional<qint64> code, qint64 copies) {
    Film f;
    f.id = id;
    f.title = title;
    f.genre = QStringLiteral("Drama");
    f.copies = copies;
    f.price = 500;
    f.code = code;
    return f;
}

Customer customer(const QString& id, const QString& name, std::optional<qint64> code) {
    Customer c;
    c.id = id;
    c.name = name;
    c.phone = QStringLiteral("(11) 987654321");
    c.code = code;
    return c;
}

Rental rental(const QString& id, const QString& filmID, Instant start, std::optional<qint64> copy) {
    Rental r;
    r.id = id;
    r.film = filmID;
    r.customer = QStringLiteral("c1");
    r.start = start;
    r.due = automaticDue(start, false);
    r.price = 500;
    r.finePerDay = 300;
    r.copy = copy;
    return r;
}

QStringList titles(const QList<Film>& films) {
    QStringList result;
    for (const Film& f : films)
        result.append(f.title);
    return result;
}

std::optional<Store> throughDatabase(const QString& path, const Store& store) {
    {
        LocalDatabase database(path);
        database.save(store);
    }
    LocalDatabase reopened(path);
    return reopened.load();
}

} // namespace selfTest
