#include "records/DateText.h"
#include "records/FilmCSVError.h"
#include "records/RentalRules.h"
#include "support/Zones.h"

#include <QTest>
#include <limits>

namespace {

constexpr qint64 none = -1; // stands for an absent copy in the tables

Instant at(const QString& text) {
    return parseDateTime(text).value();
}

Rental rental(const QString& id, const QString& film, qint64 copy, bool open = true) {
    Rental r{.id = id, .film = film, .customer = "c1", .due = at("10/10/2026 18:00"), .finePerDay = 300};
    if (!open)
        r.returned = r.due;
    if (copy != none)
        r.copy = copy;
    return r;
}

// "Tubarão" with a returned rental "r0" and an open one "r1" due 10/10/2026 18:00.
Store shop() {
    Store store;
    store.films = {{.id = "f1", .title = "Tubarão", .copies = 2}};
    store.rentals = {rental("r0", "f1", 2, false), rental("r1", "f1", 1)};
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
        const auto row = [](const char* name, const char* zone, const char* start, bool release, const char* due) {
            QTest::newRow(name) << QString(zone) << QString(start) << release << QString(due);
        };
        row("Berlin 23-hour day", "Europe/Berlin", "29/03/2025 12:00", true, "30/03/2025 13:00");
        row("Berlin 25-hour day", "Europe/Berlin", "25/10/2025 12:00", true, "26/10/2025 11:00");
        row("São Paulo midnight skipped", "America/Sao_Paulo", "03/11/2018 12:00", false, "06/11/2018 13:00");
    }
    void automaticDue() {
        QFETCH(QString, zone);
        QFETCH(QString, start);
        QFETCH(bool, release);
        QFETCH(QString, due);
        if (!inZone(zone))
            QSKIP("other zone");
        const Instant to = ::automaticDue(at(start), release);
        QCOMPARE(to.seconds - at(start).seconds, release ? 86400.0 : 259200.0);
        QCOMPARE(dateTimeText(to), due);
    }

    void overdue_data() {
        QTest::addColumn<QString>("zone");
        QTest::addColumn<QString>("due");
        QTest::addColumn<QString>("now");
        QTest::addColumn<qint64>("days");
        QTest::addColumn<double>("dueShift"); // seconds added to the due time
        const auto row = [](const char* name, const char* zone, const char* due, const char* now, qint64 days,
                            double dueShift = 0) {
            QTest::newRow(name) << QString(zone) << QString(due) << QString(now) << days << dueShift;
        };
        row("early", "", "10/10/2026 18:00", "08/10/2026 09:00", 0);
        row("Berlin 23-hour day", "Europe/Berlin", "30/03/2025 12:00", "31/03/2025 00:00", 1);
        row("Berlin 25-hour day", "Europe/Berlin", "26/10/2025 10:00", "27/10/2025 10:00", 1);
        row("São Paulo midnight skipped", "America/Sao_Paulo", "03/11/2018 12:00", "04/11/2018 01:00", 1);
        row("due a breath before midnight", "", "11/10/2026 00:00", "11/10/2026 09:00", 1, -0.0004);
    }
    void overdue() {
        QFETCH(QString, zone);
        QFETCH(QString, due);
        QFETCH(QString, now);
        QFETCH(qint64, days);
        QFETCH(double, dueShift);
        if (!inZone(zone))
            QSKIP("other zone");
        Rental late = rental("r", "f", 1);
        late.due = at(due).plusSeconds(dueShift);
        QCOMPARE(::overdue(late, at(now)), days);
    }

    void freeCopy_data() {
        QTest::addColumn<qint64>("copies");
        QTest::addColumn<QList<qint64>>("held"); // copies of the film's open rentals
        QTest::addColumn<qint64>("requested");
        QTest::addColumn<qint64>("expected");

        QTest::newRow("requested past copies") << qint64(2) << QList<qint64>{1} << qint64(3) << none;
        QTest::newRow("lowest gap") << qint64(3) << QList<qint64>{2} << none << qint64(1);
        QTest::newRow("legacy takes what is left") << qint64(3) << QList<qint64>{none, 1} << none << qint64(3);
        QTest::newRow("no copies") << qint64(0) << QList<qint64>{} << none << none;
    }
    void freeCopy() {
        QFETCH(qint64, copies);
        QFETCH(QList<qint64>, held);
        QFETCH(qint64, requested);
        QFETCH(qint64, expected);

        const Film film{.id = "f", .copies = copies};
        Store store;
        // Returned rentals and other films' rentals hold nothing.
        store.rentals = {rental("a", "f", 1, false), rental("b", "f", none, false), rental("c", "g", 1)};
        for (const qint64 copy : held)
            store.rentals.append(rental("r", "f", copy));
        const auto wanted = requested == none ? std::nullopt : std::optional(requested);
        QCOMPARE(::freeCopy(store, film, wanted).value_or(none), expected);
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
    }
    void returned() {
        QFETCH(QString, now);
        QFETCH(bool, rewound);
        QFETCH(qint64, fine);
        QFETCH(QStringList, entries);

        const Store before = shop();
        const Store after = returnedStore(before, "r1", rewound, at(now));
        Rental expected = before.rentals[1];
        expected.returned = at(now);
        expected.fine = fine;
        expected.rewound = rewound;
        expected.rewindFee = rewound ? 0 : 100;
        QCOMPARE(after.rentals, (QList<Rental>{before.rentals[0], expected}));
        QCOMPARE(lines(after.entries), entries);
        for (const Entry& entry : after.entries)
            QCOMPARE(entry.date, at(now));
    }

    void returningTwiceFails() {
        const Store once = returnedStore(shop(), "r1", false, at("10/10/2026 20:00"));
        for (const char* id : {"r1", "r0", "nobody"}) {
            try {
                returnedStore(once, id, false, at("11/10/2026 20:00"));
                QFAIL("returned a rental that was not open");
            } catch (const FilmCSVError& error) {
                QCOMPARE(error.description(), "Esta fita já foi devolvida.");
            }
        }
        QCOMPARE(lines(once.entries), QStringList{"Taxa de rebobinagem: Tubarão=100"});
    }

    void returnsTheOpenOneUnderItsId() {
        Store store = shop();
        store.rentals[0].id = "r1";
        store.films.clear();
        const Store after = returnedStore(store, "r1", false, at("11/10/2026 09:00"));
        QCOMPARE(after.rentals[0], store.rentals[0]);
        QVERIFY(after.rentals[1].returned);
        QCOMPARE(lines(after.entries), (QStringList{"Multa: Fita=300", "Taxa de rebobinagem: Fita=100"}));
    }

    void hugeFineSaturates() {
        Store store = shop();
        store.rentals[1].finePerDay = std::numeric_limits<qint64>::max() / 2;
        const Store after = returnedStore(store, "r1", true, at("13/10/2026 09:00"));
        QCOMPARE(after.rentals[1].fine, std::numeric_limits<qint64>::max());
    }
};

QTEST_APPLESS_MAIN(TestRentalRules)
#include "test_rentalrules.moc"
