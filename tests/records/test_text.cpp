#include "records/MoneyText.h"
#include "records/PhoneText.h"

#include <QTest>
#include <limits>

class TestText : public QObject {
    Q_OBJECT

private slots:
    void cents_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("expected"); // -1: absent

        QTest::newRow("point") << "5.5" << qint64(550);
        QTest::newRow("spaces and tabs around") << " \t12 " << qint64(1200);
        QTest::newRow("minus zero") << "-0,00" << qint64(0);
        QTest::newRow("not exact as a double") << "0,29" << qint64(29);
        QTest::newRow("digits below a double") << "5,50000000000000001" << qint64(550);
        QTest::newRow("upper bound") << "1000000" << qint64(100000000);
        QTest::newRow("over by a centavo") << "1000000,01" << qint64(-1);
        QTest::newRow("thousands point") << "1.000,50" << qint64(-1);
        QTest::newRow("line break kept") << "5\n" << qint64(-1);
        QTest::newRow("non-ASCII digit") << "\u0665" << qint64(-1);
    }
    void cents() {
        QFETCH(QString, text);
        QFETCH(qint64, expected);
        QCOMPARE(::cents(text).value_or(-1), expected);
    }

    void money_data() {
        QTest::addColumn<qint64>("amount");
        QTest::addColumn<QString>("expected");

        QTest::newRow("5,50") << qint64(550) << "R$\u00A05,50";
        QTest::newRow("zero") << qint64(0) << "R$\u00A00,00";
        QTest::newRow("no group yet") << qint64(99999) << "R$\u00A0999,99";
        QTest::newRow("million") << qint64(100000000) << "R$\u00A01.000.000,00";
        QTest::newRow("negative") << qint64(-100) << "-R$\u00A01,00";
        QTest::newRow("smallest") << std::numeric_limits<qint64>::min() << "-R$\u00A092.233.720.368.547.758,08";
    }
    void money() {
        QFETCH(qint64, amount);
        QFETCH(QString, expected);
        QCOMPARE(::money(amount), expected);
    }

    void formatPhone_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty") << "" << QString();
        QTest::newRow("one digit") << "1" << QString("(1");
        QTest::newRow("area code only") << "11" << QString("(11)");
        QTest::newRow("typed form") << "(11) 98765-4321" << QString("(11) 987654321");
        QTest::newRow("fourteen digits") << "11987654321999" << QString("(11) 987654321");
        QTest::newRow("non-ASCII digits") << "\uFF11\uFF11 4\u0665" << QString("(4");
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
