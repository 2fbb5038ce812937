#include "records/MoneyText.h"
#include "records/PhoneText.h"

#include <QTest>
#include <limits>

namespace {

QVariant amount(std::optional<qint64> value) {
    return value ? QVariant::fromValue(*value) : QVariant();
}
QVariant some(qint64 value) {
    return QVariant::fromValue(value);
}

} // namespace

class TestText : public QObject {
    Q_OBJECT

private slots:
    void cents_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QVariant>("expected");

        QTest::newRow("comma") << "5,50" << some(550);
        QTest::newRow("point") << "5.5" << some(550);
        QTest::newRow("spaces around") << " 12 " << some(1200);
        QTest::newRow("tabs around") << "\t7\t" << some(700);
        QTest::newRow("zero") << "0" << some(0);
        QTest::newRow("minus zero") << "-0,00" << some(0);
        QTest::newRow("plus") << "+3" << some(300);
        QTest::newRow("zeros past the centavos") << "5,500" << some(550);
        QTest::newRow("only decimals") << ",5" << some(50);
        QTest::newRow("bare point") << "5," << some(500);
        QTest::newRow("many leading zeros") << "000000000000000000000012,30" << some(1230);
        // Values a double would not hold exactly: 0.29 * 100 is 28.999…
        QTest::newRow("0,29") << "0,29" << some(29);
        QTest::newRow("1,15") << "1,15" << some(115);
        QTest::newRow("upper bound") << "1000000" << some(100000000);
        QTest::newRow("upper bound, zero centavos") << "1000000,000" << some(100000000);

        QTest::newRow("negative") << "-1" << QVariant();
        QTest::newRow("third decimal") << "1.001" << QVariant();
        QTest::newRow("far decimal") << "1,0000000000000000000001" << QVariant();
        QTest::newRow("over by a centavo") << "1000000,01" << QVariant();
        QTest::newRow("over by digits") << "9999999" << QVariant();
        QTest::newRow("huge") << "123456789012345678901234567890" << QVariant();
        QTest::newRow("empty") << "" << QVariant();
        QTest::newRow("blank") << "  " << QVariant();
        QTest::newRow("letters") << "abc" << QVariant();
        QTest::newRow("separator alone") << "," << QVariant();
        QTest::newRow("trailing word") << "5,50 reais" << QVariant();
        QTest::newRow("thousands point") << "1.000,50" << QVariant();
        QTest::newRow("exponent") << "1e3" << QVariant();
        QTest::newRow("currency sign") << "R$ 5,50" << QVariant();
        QTest::newRow("line break kept") << "5\n" << QVariant();
        QTest::newRow("no-break space kept") << "5\u00A0" << QVariant();
        QTest::newRow("non-ASCII digit") << "\u0665" << QVariant();
    }
    void cents() {
        QFETCH(QString, text);
        QFETCH(QVariant, expected);
        QCOMPARE(amount(::cents(text)), expected);
    }

    void money_data() {
        QTest::addColumn<qint64>("amount");
        QTest::addColumn<QString>("expected");

        QTest::newRow("5,50") << qint64(550) << "R$\u00A05,50";
        QTest::newRow("zero") << qint64(0) << "R$\u00A00,00";
        QTest::newRow("one centavo") << qint64(1) << "R$\u00A00,01";
        QTest::newRow("no group yet") << qint64(99999) << "R$\u00A0999,99";
        QTest::newRow("first group") << qint64(123456) << "R$\u00A01.234,56";
        QTest::newRow("million") << qint64(100000000) << "R$\u00A01.000.000,00";
        QTest::newRow("negative") << qint64(-100) << "-R$\u00A01,00";
        QTest::newRow("negative centavos") << qint64(-5) << "-R$\u00A00,05";
        QTest::newRow("largest") << std::numeric_limits<qint64>::max() << "R$\u00A092.233.720.368.547.758,07";
        QTest::newRow("smallest") << std::numeric_limits<qint64>::min() << "-R$\u00A092.233.720.368.547.758,08";
    }
    void money() {
        QFETCH(qint64, amount);
        QFETCH(QString, expected);
        QCOMPARE(::money(amount), expected);
    }

    void moneyReadsBack() {
        for (const qint64 amount : {qint64(0), qint64(7), qint64(550), qint64(123456), qint64(100000000)}) {
            const QString shown = ::money(amount).remove(QStringLiteral("R$\u00A0")).remove(u'.');
            QCOMPARE(::cents(shown), amount);
        }
    }

    void formatPhone_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");

        QTest::newRow("empty") << ""
                               << "";
        QTest::newRow("no digits") << "abc-()"
                                   << "";
        QTest::newRow("one digit") << "1"
                                   << "(1";
        QTest::newRow("area code only") << "11"
                                        << "(11)";
        QTest::newRow("one more") << "119"
                                  << "(11) 9";
        QTest::newRow("digits") << "11987654321"
                                << "(11) 987654321";
        QTest::newRow("typed form") << "(11) 98765-4321"
                                    << "(11) 987654321";
        QTest::newRow("already formatted") << "(11) 987654321"
                                           << "(11) 987654321";
        QTest::newRow("fourteen digits") << "11987654321999"
                                         << "(11) 987654321";
        QTest::newRow("non-ASCII digits") << "\uFF11\uFF11 4\u0665"
                                          << "(4";
    }
    void formatPhone() {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(::formatPhone(text), expected);
        QCOMPARE(::formatPhone(expected), expected);
    }
};

QTEST_APPLESS_MAIN(TestText)
#include "test_text.moc"
