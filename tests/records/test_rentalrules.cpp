#include "records/DateText.h"
#include "records/FilmCSVError.h"
#include "records/RentalRules.h"

#include <QTest>
#include <limits>

namespace {

bool inZone(const QString& zone) {
    return zone.isEmpty() || qEnvironmentVariable("TZ") == zone;
}

Instant at(const QString& text) {
    const auto instant = parseDateTime(text);
    if (!instant)
        qFatal("bad fixture time %s", qPrintable(text));
    return *instant;
}

Rental rental(const QString& id, const QString& film, std::optional<qint64> copy, bool open = true) {
    Rental r{.id = id, .film = film, .customer = QStringLiteral("c1")};
    r.start = at(QStringLiteral("01/10/2026 10:00"));
    r.due = automaticDue(r.start, false);
    if (!open)
        r.returned = r.due;
    r.copy = copy;
    return r;
}

// A film "f1" with a title, a customer "c1" and one open rental "r1" of copy 1,
// due 10/10/2026 18:00, fine R$ 3,00 a day.
Store shop() {
    Store store;
    store.films = {{.id = "f1", .title = "Tubarão", .genre = "Terror", .copies = 2, .price = 400}};
    store.customers = {{.id = "c1", .name = "Ana", .phone = "(11) 987654321"}};
    Rental open = rental("r1", "f1", 1);
    open.due = at("10/10/2026 18:00");
    open.finePerDay = 300;
    store.rentals = {rental("r0", "f1", 2, false), open};
    return store;
}

QStringList lines(const QList<Entry>& entries) {
    QStringList result;
    for (const Entry& entry : entries)
        result.append(entry.description + u'=' + QString::number(entry.amount));
    return result;
}

} // namespace

class TestRentalRules : public QObject {
    Q_OBJECT

private slots:
    // Elapsed seconds, whatever the clock does in between.
    void automaticDue_data() {
        QTest::addColumn<QString>("zone");
        QTest::addColumn<QString>("start");
        QTest::addColumn<bool>("release");
        QTest::addColumn<QString>("due");

        QTest::newRow("release") << ""
                                 << "10/10/2026 12:00" << true << "11/10/2026 12:00";
        QTest::newRow("catalogue") << ""
                                   << "10/10/2026 12:00" << false << "13/10/2026 12:00";
        QTest::newRow("Berlin 23-hour day") << "Europe/Berlin"
                                            << "29/03/2025 12:00" << true << "30/03/2025 13:00";
        QTest::newRow("Berlin 25-hour day") << "Europe/Berlin"
                                            << "25/10/2025 12:00" << true << "26/10/2025 11:00";
        QTest::newRow("Berlin catalogue across") << "Europe/Berlin"
                                                 << "28/03/2025 12:00" << false << "31/03/2025 13:00";
        QTest::newRow("São Paulo midnight skipped") << "America/Sao_Paulo"
                                                    << "03/11/2018 12:00" << true << "04/11/2018 13:00";
    }
    void automaticDue() {
        QFETCH(QString, zone);
        QFETCH(QString, start);
        QFETCH(bool, release);
        QFETCH(QString, due);
        if (!inZone(zone))
            QSKIP("other zone");
        const Instant from = at(start);
        const Instant to = ::automaticDue(from, release);
        QCOMPARE(to.seconds - from.seconds, release ? 86400.0 : 259200.0);
        QCOMPARE(dateTimeText(to), due);
    }

    void overdue_data() {
        QTest::addColumn<QString>("zone");
        QTest::addColumn<QString>("due");
        QTest::addColumn<QString>("now");
        QTest::addColumn<qint64>("days");

        QTest::newRow("same evening") << ""
                                      << "10/10/2026 18:00"
                                      << "10/10/2026 23:00" << qint64(0);
        QTest::newRow("next morning") << ""
                                      << "10/10/2026 18:00"
                                      << "11/10/2026 09:00" << qint64(1);
        QTest::newRow("one minute, next day") << ""
                                              << "10/10/2026 23:59"
                                              << "11/10/2026 00:00" << qint64(1);
        QTest::newRow("early") << ""
                               << "10/10/2026 18:00"
                               << "08/10/2026 09:00" << qint64(0);
        QTest::newRow("across months") << ""
                                       << "30/09/2026 18:00"
                                       << "02/10/2026 08:00" << qint64(2);
        QTest::newRow("Berlin 23-hour day") << "Europe/Berlin"
                                            << "30/03/2025 12:00"
                                            << "31/03/2025 00:00" << qint64(1);
        QTest::newRow("Berlin 25-hour day") << "Europe/Berlin"
                                            << "26/10/2025 10:00"
                                            << "27/10/2025 10:00" << qint64(1);
        QTest::newRow("São Paulo midnight skipped") << "America/Sao_Paulo"
                                                    << "03/11/2018 12:00"
                                                    << "04/11/2018 01:00" << qint64(1);
        QTest::newRow("São Paulo 25-hour day") << "America/Sao_Paulo"
                                               << "16/02/2019 10:00"
                                               << "17/02/2019 10:00" << qint64(1);
    }
    void overdue() {
        QFETCH(QString, zone);
        QFETCH(QString, due);
        QFETCH(QString, now);
        QFETCH(qint64, days);
        if (!inZone(zone))
            QSKIP("other zone");
        Rental late = rental("r", "f", 1);
        late.due = at(due);
        QCOMPARE(::overdue(late, at(now)), days);
    }

    void freeCopy_data() {
        QTest::addColumn<qint64>("copies");
        QTest::addColumn<QVariantList>("held"); // copies of the film's open rentals; null: no copy number
        QTest::addColumn<QVariant>("requested");
        QTest::addColumn<QVariant>("expected");

        const QVariant none;
        QTest::newRow("next free") << qint64(2) << QVariantList{1} << none << QVariant(2);
        QTest::newRow("requested taken") << qint64(2) << QVariantList{1} << QVariant(1) << none;
        QTest::newRow("requested free") << qint64(2) << QVariantList{1} << QVariant(2) << QVariant(2);
        QTest::newRow("requested past copies") << qint64(2) << QVariantList{1} << QVariant(3) << none;
        QTest::newRow("requested zero") << qint64(2) << QVariantList{} << QVariant(0) << none;
        QTest::newRow("lowest gap") << qint64(3) << QVariantList{2} << none << QVariant(1);
        QTest::newRow("all taken") << qint64(2) << QVariantList{2, 1} << none << none;
        QTest::newRow("legacy holds the only copy") << qint64(1) << QVariantList{none} << none << none;
        QTest::newRow("legacy takes what is left") << qint64(3) << QVariantList{none, 1} << none << QVariant(3);
        QTest::newRow("legacy blocks request") << qint64(2) << QVariantList{none} << QVariant(1) << none;
        QTest::newRow("legacy beyond copies") << qint64(1) << QVariantList{none, none} << none << none;
        QTest::newRow("no copies") << qint64(0) << QVariantList{} << none << none;
        QTest::newRow("no copies, requested") << qint64(0) << QVariantList{} << QVariant(1) << none;
    }
    void freeCopy() {
        QFETCH(qint64, copies);
        QFETCH(QVariantList, held);
        QFETCH(QVariant, requested);
        QFETCH(QVariant, expected);

        const Film film{.id = "f", .title = "Alien", .copies = copies};
        Store store;
        store.films = {film};
        // Returned rentals and other films' rentals hold nothing.
        store.rentals = {rental("old", "f", 1, false), rental("old2", "f", std::nullopt, false), rental("g", "g", 1)};
        for (const QVariant& copy : held)
            store.rentals.append(
                rental("r", "f", copy.isNull() ? std::nullopt : std::optional<qint64>(copy.toLongLong())));

        const auto wanted = requested.isNull() ? std::nullopt : std::optional<qint64>(requested.toLongLong());
        const auto copy = ::freeCopy(store, film, wanted);
        QCOMPARE(copy.has_value(), !expected.isNull());
        if (copy)
            QCOMPARE(*copy, expected.toLongLong());
    }

    void returned_data() {
        QTest::addColumn<QString>("now");
        QTest::addColumn<bool>("rewound");
        QTest::addColumn<qint64>("fine");
        QTest::addColumn<QStringList>("entries");

        QTest::newRow("late, not rewound") << "12/10/2026 09:00" << false << qint64(600)
                                           << QStringList{"Multa: Tubarão=600", "Taxa de rebobinagem: Tubarão=100"};
        QTest::newRow("on time, rewound") << "10/10/2026 23:00" << true << qint64(0) << QStringList{};
        QTest::newRow("late, rewound") << "11/10/2026 08:00" << true << qint64(300)
                                       << QStringList{"Multa: Tubarão=300"};
        QTest::newRow("on time, not rewound")
            << "10/10/2026 10:00" << false << qint64(0) << QStringList{"Taxa de rebobinagem: Tubarão=100"};
    }
    void returned() {
        QFETCH(QString, now);
        QFETCH(bool, rewound);
        QFETCH(qint64, fine);
        QFETCH(QStringList, entries);

        const Store before = shop();
        const Store after = returnedStore(before, "r1", rewound, at(now));

        const Rental& done = after.rentals[1];
        QCOMPARE(done.returned, at(now));
        QCOMPARE(done.fine, fine);
        QCOMPARE(done.rewound, rewound);
        QCOMPARE(done.rewindFee, rewound ? 0 : 100);

        Rental unchanged = done;
        unchanged.returned.reset();
        unchanged.fine.reset();
        unchanged.rewound.reset();
        unchanged.rewindFee.reset();
        QCOMPARE(unchanged, before.rentals[1]);
        QCOMPARE(after.rentals[0], before.rentals[0]);
        QCOMPARE(after.films, before.films);

        QCOMPARE(lines(after.entries), entries);
        for (const Entry& entry : after.entries) {
            QCOMPARE(entry.date, at(now));
            QCOMPARE(entry.id.size(), 36);
        }
        if (after.entries.size() == 2)
            QVERIFY(after.entries[0].id != after.entries[1].id);
    }

    void returningTwiceFails() {
        const Store once = returnedStore(shop(), "r1", false, at("10/10/2026 20:00"));
        for (const QString& id : {QStringLiteral("r1"), QStringLiteral("r0"), QStringLiteral("nobody")}) {
            try {
                returnedStore(once, id, false, at("11/10/2026 20:00"));
                QFAIL("returned a rental that was not open");
            } catch (const FilmCSVError& error) {
                QCOMPARE(error.description(), "Esta fita já foi devolvida.");
            }
        }
        QCOMPARE(lines(once.entries), QStringList{"Taxa de rebobinagem: Tubarão=100"});
    }

    // The first OPEN rental with the id is the one returned.
    void returnsTheOpenOne() {
        Store store = shop();
        store.rentals[0].id = "r1";
        const Store after = returnedStore(store, "r1", true, at("10/10/2026 20:00"));
        QCOMPARE(after.rentals[0], store.rentals[0]);
        QVERIFY(after.rentals[1].returned);
    }

    void missingFilmIsFita() {
        Store store = shop();
        store.films.clear();
        const Store after = returnedStore(store, "r1", false, at("11/10/2026 09:00"));
        QCOMPARE(lines(after.entries), (QStringList{"Multa: Fita=300", "Taxa de rebobinagem: Fita=100"}));
    }

    void hugeFineSaturates() {
        Store store = shop();
        store.rentals[1].finePerDay = std::numeric_limits<qint64>::max() / 2;
        const Store after = returnedStore(store, "r1", true, at("13/10/2026 09:00"));
        QCOMPARE(after.rentals[1].fine, std::numeric_limits<qint64>::max());
        QCOMPARE(after.entries.first().amount, std::numeric_limits<qint64>::max());
    }

    void deletionGuards() {
        const Store store = shop();
        QCOMPARE(inUse(store, "f1"), 1);
        QVERIFY(!canDeleteFilm(store, "f1"));
        QVERIFY(!canDeleteCustomer(store, "c1"));
        QVERIFY(canDeleteFilm(store, "other"));
        QVERIFY(canDeleteCustomer(store, "other"));

        const Store after = returnedStore(store, "r1", true, at("10/10/2026 20:00"));
        QCOMPARE(inUse(after, "f1"), 0);
        QVERIFY(canDeleteFilm(after, "f1"));
        QVERIFY(canDeleteCustomer(after, "c1"));
    }
};

QTEST_APPLESS_MAIN(TestRentalRules)
#include "test_rentalrules.moc"
