#include "records/AdjustedReturn.h"
#include "records/FilmCSVError.h"
#include "support/Dates.h"
#include "support/Zones.h"

#include <QTest>

namespace {

// One rental of "Tubarão", 3,00 a day late; the start 40 s into its minute.
struct Shop {
    QString zone, start, due, now;
};
const Shop march{"", "01/03/2026 10:00", "04/03/2026 10:00", "07/03/2026 12:00"};
const Shop saoPauloSpring{"America/Sao_Paulo", "01/11/2018 10:00", "03/11/2018 20:00", "05/11/2018 12:00"};
const Shop berlinSpring{"Europe/Berlin", "26/03/2026 10:00", "28/03/2026 20:00", "30/03/2026 12:00"};

Store shopStore(const Shop& shop) {
    Store s;
    s.films = {{.id = "f1", .title = "Tubarão", .copies = 1}};
    s.rentals = {{.id = "r1",
                  .film = "f1",
                  .customer = "c1",
                  .start = at(shop.start).plusSeconds(40),
                  .due = at(shop.due),
                  .finePerDay = 300,
                  .copy = 1}};
    return s;
}

struct Case {
    Shop shop;
    QString typed, amount, reason;
    QString refusal;  // the dialog's title; empty: accepted
    QString returned; // accepted: the instant as shown
    qint64 fine = 0, forgiven = 0;
};

QStringList lines(const QList<Entry>& entries, Instant date) {
    QStringList result;
    for (const Entry& entry : entries)
        result.append(entry.description + u'=' + QString::number(entry.amount) +
                      (entry.date == date ? QString() : QStringLiteral(" (other date)")));
    return result;
}

} // namespace

class TestAdjustedReturn : public QObject {
    Q_OBJECT

private slots:
    void check_data() {
        QTest::addColumn<Case>("c");
        const QString invalid = QStringLiteral("Dados inválidos");
        const QString badDate = QStringLiteral("Data inválida");
        QTest::newRow("drop box, last evening")
            << Case{march, "06/03/2026 21:30", "0,00", "", "", "06/03/2026 21:30", 600};
        QTest::newRow("within the start's minute")
            << Case{march, "01/03/2026 10:00", "0,00", "", "", "01/03/2026 10:00"};
        QTest::newRow("before the start") << Case{march, "01/03/2026 09:59", "0,00", "", badDate};
        QTest::newRow("now's minute") << Case{march, "07/03/2026 12:00", "0,00", "", "", "07/03/2026 12:00", 900};
        QTest::newRow("in the future") << Case{march, "07/03/2026 12:01", "0,00", "", badDate};
        QTest::newRow("not a date as written") << Case{march, "6/3/2026 21:30", "0,00", "", invalid};
        QTest::newRow("whole fine forgiven")
            << Case{march, "06/03/2026 21:30", "6,00", " chuva ", "", "06/03/2026 21:30", 600, 600};
        QTest::newRow("above the fine") << Case{march, "06/03/2026 21:30", "6,01", "chuva", "Abono maior que a multa"};
        QTest::newRow("forgiven without a reason") << Case{march, "06/03/2026 21:30", "1,00", "  ", "Informe o motivo"};
        // A clock time the daylight-saving change skipped is refused, not moved an hour.
        QTest::newRow("São Paulo, skipped midnight") << Case{saoPauloSpring, "04/11/2018 00:30", "", "", invalid};
        QTest::newRow("Berlin, skipped hour") << Case{berlinSpring, "29/03/2026 02:30", "", "", invalid};
        QTest::newRow("Berlin, after the change")
            << Case{berlinSpring, "29/03/2026 03:00", "", "", "", "29/03/2026 03:00", 300};
    }
    void check() {
        QFETCH(Case, c);
        if (!inZone(c.shop.zone))
            QSKIP("other zone");
        const Store before = shopStore(c.shop);
        const auto result = adjustedReturn(before, "r1", c.typed, c.amount, c.reason, at(c.shop.now));
        if (!c.refusal.isEmpty()) {
            QVERIFY(std::holds_alternative<RuleRefusal>(result));
            QCOMPARE(std::get<RuleRefusal>(result).title, c.refusal);
            return;
        }
        if (const auto* refusal = std::get_if<RuleRefusal>(&result))
            QFAIL(qPrintable(refusal->text));
        const AdjustedReturn& checked = std::get<AdjustedReturn>(result);
        QCOMPARE(dateTimeText(checked.returned), c.returned);
        QVERIFY(checked.returned >= before.rentals[0].start);
        QCOMPARE(checked.fine, c.fine);
        QCOMPARE(checked.forgiven, c.forgiven);
        QCOMPARE(checked.reason, c.forgiven > 0 ? c.reason.trimmed() : QString());
    }

    // The usual return at that instant, then the forgiveness dated the same instant.
    void returned_data() {
        QTest::addColumn<QString>("amount");
        QTest::addColumn<QStringList>("entries");
        QTest::newRow("forgiven") << "4,00"
                                  << QStringList{"Multa: Tubarão=600", "Taxa de rebobinagem: Tubarão=100",
                                                 "Abono de multa: Tubarão — chuva=-400"};
        QTest::newRow("nothing forgiven")
            << "0,00" << QStringList{"Multa: Tubarão=600", "Taxa de rebobinagem: Tubarão=100"};
    }
    void returned() {
        QFETCH(QString, amount);
        QFETCH(QStringList, entries);
        const Store before = shopStore(march);
        const auto checked = adjustedReturn(before, "r1", "06/03/2026 21:30", amount, "chuva", at(march.now));
        const Store after = adjustedReturnedStore(before, std::get<AdjustedReturn>(checked), false);
        const Instant returned = at("06/03/2026 21:30");
        QCOMPARE(lines(after.entries, returned), entries);
        QCOMPARE(after.rentals[0].returned, returned);
        QCOMPARE(after.rentals[0].fine, 600); // the whole fine; the forgiveness is the entry

        // Returned meanwhile: refused before the question, and refused again after it.
        const auto again = adjustedReturn(after, "r1", "06/03/2026 21:30", "0,00", "", at(march.now));
        QCOMPARE(std::get<RuleRefusal>(again).text, QStringLiteral("Esta fita já foi devolvida."));
        QVERIFY_THROWS_EXCEPTION(FilmCSVError, adjustedReturnedStore(after, std::get<AdjustedReturn>(checked), true));
    }
};

QTEST_APPLESS_MAIN(TestAdjustedReturn)
#include "test_adjustedreturn.moc"
