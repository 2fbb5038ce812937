#include "records/DateText.h"
#include "support/Zones.h"

#include <QTest>
#include <cmath>

class TestDates : public QObject {
    Q_OBJECT

private slots:
    void parse_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDateTime>("expected"); // local; invalid: absent

        QTest::newRow("leap day") << "29/02/2024" << QDateTime(QDate(2024, 2, 29), QTime(0, 0));
        QTest::newRow("date and time") << "08/10/2026 14:30" << QDateTime(QDate(2026, 10, 8), QTime(14, 30));
        QTest::newRow("not a leap year") << "29/02/2026" << QDateTime();
        QTest::newRow("trailing space") << "08/10/2026 " << QDateTime();
        QTest::newRow("hour 25") << "08/10/2026 25:00" << QDateTime();
    }
    void parse() {
        QFETCH(QString, text);
        QFETCH(QDateTime, expected);
        const auto parsed = parseDateTime(text);
        QCOMPARE(parsed.has_value(), expected.isValid());
        if (parsed)
            QCOMPARE(parsed->toDateTime(), expected);
        // Only parseDateTime reads a time; a date alone reads the same both ways.
        QCOMPARE(parseDate(text), text.size() == 10 ? parsed : std::nullopt);
    }

    void texts_data() {
        QTest::addColumn<QString>("zone");
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QString>("expected");

        QTest::newRow("São Paulo summer") << "America/Sao_Paulo" << 0.0 << "31/12/2000 22:00";
        QTest::newRow("Berlin") << "Europe/Berlin" << 0.0 << "01/01/2001 01:00";
        QTest::newRow("cut, not rounded") << "America/Sao_Paulo" << 10799.9996 << "01/01/2001 00:59";
        QTest::newRow("binary noise below the minute")
            << "America/Sao_Paulo" << std::nextafter(10800.0, 0.0) << "01/01/2001 01:00";
    }
    void texts() {
        QFETCH(QString, zone);
        QFETCH(double, seconds);
        QFETCH(QString, expected);
        if (!inZone(zone))
            QSKIP("other zone");
        QCOMPARE(dateTimeText(Instant{seconds}), expected);
        QCOMPARE(dateText(Instant{seconds}), expected.left(10));
    }

    // A day whose midnight is skipped starts at the first time that exists; a
    // day may be 23 or 25 hours long.
    void daylightSaving_data() {
        QTest::addColumn<QString>("zone");
        QTest::addColumn<QString>("day");
        QTest::addColumn<QString>("start");
        QTest::addColumn<int>("hours");
        const auto row = [](const char* name, const char* zone, const char* day, const char* start, int hours) {
            QTest::newRow(name) << QString(zone) << QString(day) << QString(start) << hours;
        };
        row("São Paulo, midnight skipped", "America/Sao_Paulo", "04/11/2018", "04/11/2018 01:00", 23);
        row("São Paulo, midnight twice", "America/Sao_Paulo", "16/02/2019", "16/02/2019 00:00", 25);
        row("Berlin, spring", "Europe/Berlin", "30/03/2025", "30/03/2025 00:00", 23);
        row("Berlin, autumn", "Europe/Berlin", "26/10/2025", "26/10/2025 00:00", 25);
    }
    void daylightSaving() {
        QFETCH(QString, zone);
        QFETCH(QString, day);
        QFETCH(QString, start);
        QFETCH(int, hours);
        if (!inZone(zone))
            QSKIP("other zone");

        const auto parsed = parseDate(day);
        QVERIFY(parsed);
        QCOMPARE(dateTimeText(*parsed), start);
        QCOMPARE(calendar::startOfDay(parsed->plusSeconds(12 * 3600)), *parsed);
        const auto next = parseDate(calendar::localDate(*parsed).addDays(1).toString(u"dd/MM/yyyy"));
        QVERIFY(next);
        QCOMPARE(next->seconds - parsed->seconds, hours * 3600.0);
    }
};

QTEST_APPLESS_MAIN(TestDates)
#include "test_dates.moc"
