#include "modes/SelfTestChecks.h"

#include "print/Labels.h"
#include "print/MemberCard.h"
#include "records/Codes.h"
#include "records/DateText.h"
#include "records/MoneyText.h"
#include "records/PhoneText.h"
#include "records/RentalRules.h"
#include "records/Search.h"
#include "records/StoreJSON.h"
#include "storage/LocalDatabase.h"
#include "storage/StartupLoading.h"

#include <QFile>

namespace selfTest {

void persistenceRentalsLabelsAndCards(const ScratchFolder& scratch) {
    const Instant start = localInstant(2026, 10, 8, 18, 0);
    Store store;
    store.films = {film(QStringLiteral("f1"), QStringLiteral("Tubarão"), 7, 2)};
    store.customers = {customer(QStringLiteral("c1"), QStringLiteral("Ana"), 1)};
    store.rentals = {rental(QStringLiteral("r1"), QStringLiteral("f1"), start, 1)};

    const QString path = scratch.file(QStringLiteral("test.sqlite"));
    {
        LocalDatabase database(path);
        check(!database.load(), "New database is not empty");
        database.save(store);
        check(database.load() == store, "SQLite save and load differ");
    }
    check(LocalDatabase(path).load() == store, "SQLite reopen lost data");

    check(automaticDue(start, true).seconds - start.seconds == 86400, "Release is not due in 24 hours");
    check(automaticDue(start, false).seconds - start.seconds == 259200, "Catalogue film is not due in 3 days");

    const Film& tape = store.films.first();
    check(freeCopy(store, tape) == 2, "Free copy skips the rented one");
    check(!freeCopy(store, tape, 1), "Rented copy offered again");
    check(freeCopy(store, tape, 2) == 2 && !freeCopy(store, tape, 3), "Requested copy");
    Store legacy = store;
    legacy.films.first().copies = 1;
    legacy.rentals.first().copy.reset();
    check(!freeCopy(legacy, legacy.films.first()), "Legacy rental does not hold a copy");

    const QString labels = labelDocument(store.films, QStringLiteral("LOCADORA"));
    check(labels.count(QStringLiteral("<section class='label'")) == 2, "One label per copy");
    check(labels.contains(QStringLiteral("style='width:70.0mm;height:18.0mm'")), "Default label size");
    check(labels.contains(QStringLiteral("COD-0007 / EX. 2")), "Label code line");
    const QString barcode = barcodeSVG(QStringLiteral("COD-0007-001"));
    check(barcode.contains(QStringLiteral("viewBox='0 0 243 30'")) && barcode.contains(QStringLiteral("width:60.75mm")),
          "Code 39 geometry");
    check(barcode.startsWith(QStringLiteral("<svg")) &&
              barcode.contains(QStringLiteral("<rect x='10' y='0' width='1' height='30'/><rect x='14' y='0' "
                                              "width='1' height='30'/><rect x='16' y='0' width='3'")),
          "Code 39 start character");
    check(barcodeSVG(QStringLiteral("cod-1")).isEmpty(), "Barcode accepts lower case");
    check(requiredLabelWidth({}) == 70.0 && labels.contains(barcodeSVG(QStringLiteral("COD-0007-002"))), "Label width");

    const QString card = memberCardSVG(store.customers.first(), QStringLiteral("LOCADORA"));
    check(card.contains(QStringLiteral(">CLI-0001<")) &&
              card.contains(QStringLiteral("translate(20.424999999999997 37.6)")),
          "Membership card barcode");
    check(card.contains(QStringLiteral("x='19.699999999999996'")), "Membership card header");
    const QString cards =
        memberDocument({store.customers.first(), customer(QStringLiteral("c2"), QStringLiteral("Bia"), 2)},
                       QStringLiteral("LOCADORA"));
    check(cards.count(QStringLiteral("<section class='card'>")) == 2 &&
              cards.indexOf(QStringLiteral("CLI-0001")) < cards.indexOf(QStringLiteral("CLI-0002")),
          "Membership cards in order");
}

void recordsDatesAndHistory() {
    Store store;
    Film full = film(QStringLiteral("f1"), QStringLiteral("Tubarão"), 1, 1);
    full.year = 1975;
    full.originalTitle = QStringLiteral("Jaws");
    full.release = true;
    full.sinapse = QStringLiteral("Praia");
    Customer address = customer(QStringLiteral("c1"), QStringLiteral("Ana"), 1);
    address.address = QStringLiteral("Rua A, 1");
    address.city = QStringLiteral("São Paulo");
    address.state = QStringLiteral("SP");
    address.zip = QStringLiteral("01000-000");
    store.films = {full};
    store.customers = {address};
    Rental open = rental(QStringLiteral("r1"), QStringLiteral("f1"), localInstant(2026, 10, 1, 10, 0), 1);
    open.start.seconds += 0.25;
    store.rentals = {open};
    check(decodeStore(encodeStore(store)) == store, "Expanded records JSON round trip");

    check(parseDate(QStringLiteral("08/10/2026")) == localInstant(2026, 10, 8, 0, 0), "Date reading");
    check(!parseDate(QStringLiteral("31/02/2026")) && !parseDate(QStringLiteral("8/10/2026")), "Date strictness");
    check(dateTimeText(localInstant(2026, 10, 8, 14, 30)) == QStringLiteral("08/10/2026 14:30"), "Date text");

    check(!canDeleteFilm(store, QStringLiteral("f1")) && !canDeleteCustomer(store, QStringLiteral("c1")),
          "Deletion guard with open rental");
    const Instant now = open.due.plusSeconds(2 * 86400);
    const Store returned = returnedStore(store, QStringLiteral("r1"), false, now);
    check(canDeleteFilm(returned, QStringLiteral("f1")) && canDeleteCustomer(returned, QStringLiteral("c1")),
          "Deletion guard after return");
    check(returned.entries.size() == 2 && returned.rentals.first().fine == 600 &&
              returned.rentals.first().rewindFee == 100,
          "Fine and rewind fee");
    check(refuses([&] { returnedStore(returned, QStringLiteral("r1"), false, now); }), "Duplicate rewind fee");

    Store removed = returned;
    removed.films.first().deleted = true;
    check(activeFilms(removed).isEmpty() && removed.films.size() == 1 && removed.rentals.size() == 1 &&
              removed.entries.size() == 2,
          "Deleted film keeps its history");
}

void migrationSearchAndRoundTrip(const ScratchFolder& scratch) {
    Store codes;
    for (const std::optional<qint64> code :
         {std::optional<qint64>(), std::optional<qint64>(3), std::optional<qint64>(3), std::optional<qint64>(0),
          std::optional<qint64>(1)})
        codes.films.append(film(newIdentifier(), QStringLiteral("F"), code));
    const Store migrated = assigningFilmCodes(codes);
    QList<qint64> assigned;
    for (const Film& f : migrated.films)
        assigned.append(f.code.value_or(-1));
    check(assigned == QList<qint64>({4, 3, 5, 6, 1}), "Film code migration");
    check(assigningFilmCodes(migrated) == migrated, "Film code migration twice");
    check(numericCode(QStringLiteral("COD-0001-002")) == 1 && inventoryCode(1) == QStringLiteral("COD-0001") &&
              numericCode(QStringLiteral(" cli-0042 ")) == 42,
          "Code texts");
    const QList<Film> shelf = {film(QStringLiteral("a"), QStringLiteral("Apollo 13"), 1),
                               film(QStringLiteral("b"), QStringLiteral("Duna"), 12),
                               film(QStringLiteral("c"), QStringLiteral("Ação"), 5)};
    check(matchingFilms(shelf, QStringLiteral("12")).size() == 1 &&
              matchingFilms(shelf, QStringLiteral("13")).size() == 1 &&
              matchingFilms(shelf, QStringLiteral("ACAO")).size() == 1,
          "Film search");

    check(formatPhone(QStringLiteral("11987654321")) == QStringLiteral("(11) 987654321") &&
              formatPhone(QStringLiteral("(11) 987654321")) == QStringLiteral("(11) 987654321"),
          "DDD formatting");

    const QByteArray legacy =
        R"json({"films":[{"id":"f","title":"Alien","genre":"Terror","copies":1,"price":400}],)json"
        R"json("customers":[{"id":"c","name":"Ana","phone":"(11)"}],"rentals":[],"entries":[]})json";
    check(decodeStore(R"({"films":[],"customers":[],"rentals":[],"entries":[]})") == Store{}, "Empty document");
    const QString folder = scratch.file(QStringLiteral("legado"));
    check(QDir().mkpath(folder), "Temporary folder cannot be created");
    {
        QFile file(QDir(folder).filePath(QStringLiteral("dados.json")));
        check(file.open(QIODevice::WriteOnly) && file.write(legacy) == legacy.size(), "Legacy file cannot be written");
    }
    {
        const LoadedStore loaded = loadAtStartup(folder);
        check(loaded.store.films.first().code == 1 && loaded.store.customers.first().code == 1 &&
                  loaded.store.reportRentalBaseline == 0,
              "Legacy data migration");
        QFile copy(QDir(folder).filePath(QStringLiteral("dados-antes-3.0.json")));
        check(copy.open(QIODevice::ReadOnly) && copy.readAll() == legacy, "Legacy copy");
        Store named = loaded.store;
        named.locadoraName = QStringLiteral("Vídeo & Cia");
        loaded.database->save(named);
    }
    check(loadAtStartup(folder).store.locadoraName == QStringLiteral("Vídeo & Cia"), "Custom name persistence");

    check(cents(QStringLiteral("5,50")) == 550 && !cents(QStringLiteral("-1")) && !cents(QStringLiteral("1.001")),
          "Currency validation");

    Rental late = rental(QStringLiteral("r"), QStringLiteral("f"), localInstant(2026, 10, 5, 18, 0), 1);
    late.due = localInstant(2026, 10, 8, 18, 0);
    check(overdue(late, localInstant(2026, 10, 8, 23, 0)) == 0 && overdue(late, localInstant(2026, 10, 9, 9, 0)) == 1 &&
              overdue(late, localInstant(2026, 10, 1, 9, 0)) == 0,
          "Calendar overdue calculation");

    Store whole = migrated;
    whole.customers = {customer(QStringLiteral("c"), QStringLiteral("Ana"), 1)};
    whole.rentals = {late};
    whole.entries = {Entry{QStringLiteral("e"), localInstant(2026, 10, 5, 18, 0), QStringLiteral("Locação"), 500}};
    whole.reportRentalBaseline = 3;
    whole.locadoraName = QStringLiteral("Locadora");
    check(throughDatabase(scratch.file(QStringLiteral("test.sqlite")), whole) == whole, "Persistent data round trip");
}

} // namespace selfTest
