#include "records/DateText.h"

#include <QTest>

namespace {

// Rows tied to one zone's daylight-saving history run only under that TZ; the
// CTest runs cover each zone.
bool inZone(const QString& zone) {
    return zone.isEmpty() || qEnvironmentVariable("TZ") == zone;
}

QDateTime local(const Instant& instant) {
    return instant.toDateTime().toLocalTime();
}

} // namespace

class TestDates : public QObject {
    Q_OBJECT

private slots:
    void parseDate_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDate>("expected"); // invalid: absent

        QTest::newRow("plain") << "08/10/2026" << QDate(2026, 10, 8);
        QTest::newRow("leap day") << "29/02/2024" << QDate(2024, 2, 29);
        QTest::newRow("new year") << "01/01/2001" << QDate(2001, 1, 1);
        QTest::newRow("one-digit day") << "8/10/2026" << QDate();
        QTest::newRow("one-digit month") << "08/1/2026" << QDate();
        QTest::newRow("two-digit year") << "08/10/26" << QDate();
        QTest::newRow("five-digit year") << "08/10/02026" << QDate();
        QTest::newRow("no such day") << "31/02/2026" << QDate();
        QTest::newRow("not a leap year") << "29/02/2026" << QDate();
        QTest::newRow("day zero") << "00/10/2026" << QDate();
        QTest::newRow("month 13") << "08/13/2026" << QDate();
        QTest::newRow("leading space") << " 08/10/2026" << QDate();
        QTest::newRow("trailing space") << "08/10/2026 " << QDate();
        QTest::newRow("time after") << "08/10/2026 14:30" << QDate();
        QTest::newRow("hyphens") << "08-10-2026" << QDate();
        QTest::newRow("empty") << "" << QDate();
    }
    void parseDate() {
        QFETCH(QString, text);
        QFETCH(QDate, expected);
        const auto parsed = ::parseDate(text);
        QCOMPARE(parsed.has_value(), expected.isValid());
        if (parsed)
            QCOMPARE(local(*parsed), QDateTime(expected, QTime(0, 0)));
    }

    void parseDateTime_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDateTime>("expected"); // invalid: absent

        QTest::newRow("date and time") << "08/10/2026 14:30" << QDateTime(QDate(2026, 10, 8), QTime(14, 30));
        QTest::newRow("date alone") << "08/10/2026" << QDateTime(QDate(2026, 10, 8), QTime(0, 0));
        QTest::newRow("last minute") << "31/12/2026 23:59" << QDateTime(QDate(2026, 12, 31), QTime(23, 59));
        QTest::newRow("hour 25") << "08/10/2026 25:00" << QDateTime();
        QTest::newRow("minute 60") << "08/10/2026 14:60" << QDateTime();
        QTest::newRow("no such day") << "31/02/2026 10:00" << QDateTime();
        QTest::newRow("time alone") << "14:30" << QDateTime();
        QTest::newRow("empty") << "" << QDateTime();
    }
    void parseDateTime() {
        QFETCH(QString, text);
        QFETCH(QDateTime, expected);
        const auto parsed = ::parseDateTime(text);
        QCOMPARE(parsed.has_value(), expected.isValid());
        if (parsed)
            QCOMPARE(local(*parsed), expected);
    }

    // Texts are in the local zone, cut (not rounded) to the minute.
    void texts_data() {
        QTest::addColumn<QString>("zone");
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QString>("date");
        QTest::addColumn<QString>("dateTime");

        QTest::newRow("reference, São Paulo summer") << "America/Sao_Paulo" << 0.0 << "31/12/2000"
                                                     << "31/12/2000 22:00";
        QTest::newRow("reference, Berlin") << "Europe/Berlin" << 0.0 << "01/01/2001"
                                           << "01/01/2001 01:00";
        QTest::newRow("fraction cut, not rounded") << "America/Sao_Paulo" << 3600.0 * 3 + 59.9 << "01/01/2001"
                                                   << "01/01/2001 01:00";
        QTest::newRow("before the reference") << "Europe/Berlin" << -7200.0 << "31/12/2000"
                                              << "31/12/2000 23:00";
    }
    void texts() {
        QFETCH(QString, zone);
        QFETCH(double, seconds);
        QFETCH(QString, date);
        QFETCH(QString, dateTime);
        if (!inZone(zone))
            QSKIP("other zone");
        QCOMPARE(dateText(Instant{seconds}), date);
        QCOMPARE(dateTimeText(Instant{seconds}), dateTime);
    }

    void textsReadBack() {
        const Instant minute = Instant::fromDateTime(QDateTime(QDate(2026, 10, 8), QTime(14, 30)));
        QCOMPARE(::parseDateTime(dateTimeText(minute)), minute);
        QCOMPARE(::parseDate(dateText(minute)), calendar::startOfDay(minute));
    }

    // A day whose midnight is skipped starts at the first time that exists; a
    // day may be 23 or 25 hours long.
    void daylightSaving_data() {
        QTest::addColumn<QString>("zone");
        QTest::addColumn<QString>("day");
        QTest::addColumn<QString>("start");
        QTest::addColumn<int>("hours");

        QTest::newRow("São Paulo, midnight skipped") << "America/Sao_Paulo"
                                                     << "04/11/2018"
                                                     << "04/11/2018 01:00" << 23;
        QTest::newRow("São Paulo, day before") << "America/Sao_Paulo"
                                               << "03/11/2018"
                                               << "03/11/2018 00:00" << 24;
        QTest::newRow("São Paulo, midnight twice") << "America/Sao_Paulo"
                                                   << "16/02/2019"
                                                   << "16/02/2019 00:00" << 25;
        QTest::newRow("Berlin, spring") << "Europe/Berlin"
                                        << "30/03/2025"
                                        << "30/03/2025 00:00" << 23;
        QTest::newRow("Berlin, autumn") << "Europe/Berlin"
                                        << "26/10/2025"
                                        << "26/10/2025 00:00" << 25;
    }
    void daylightSaving() {
        QFETCH(QString, zone);
        QFETCH(QString, day);
        QFETCH(QString, start);
        QFETCH(int, hours);
        if (!inZone(zone))
            QSKIP("other zone");

        const auto parsed = ::parseDate(day);
        QVERIFY(parsed);
        QCOMPARE(dateTimeText(*parsed), start);
        QCOMPARE(calendar::localDate(*parsed), QDate::fromString(day, u"dd/MM/yyyy"));
        QCOMPARE(calendar::startOfDay(parsed->plusSeconds(12 * 3600)), *parsed);

        const auto next = ::parseDate(calendar::localDate(*parsed).addDays(1).toString(u"dd/MM/yyyy"));
        QVERIFY(next);
        QCOMPARE(next->seconds - parsed->seconds, hours * 3600.0);
    }
};

QTEST_APPLESS_MAIN(TestDates)
#include "test_dates.moc"
