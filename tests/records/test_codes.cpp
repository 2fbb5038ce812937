#include "records/Codes.h"

#include <QTest>

namespace {

constexpr qint64 absent = -1000; // stands for an absent code in the tables

std::optional<qint64> code(qint64 value) {
    return value == absent ? std::nullopt : std::optional(value);
}

} // namespace

class TestCodes : public QObject {
    Q_OBJECT

private slots:
    void numericCode_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("expected");

        QTest::newRow("lower case film") << "cod-0001" << qint64(1);
        QTest::newRow("empty pieces dropped") << "COD--5" << qint64(5);
        QTest::newRow("bare, line breaks") << "\n0012\t" << qint64(12);
        QTest::newRow("prefix alone") << "COD-" << absent;
        QTest::newRow("letter in code") << "COD-12A" << absent;
        QTest::newRow("space after prefix") << "COD- 5" << absent;
        QTest::newRow("overflow") << "9223372036854775808" << absent;
    }
    void numericCode() {
        QFETCH(QString, text);
        QFETCH(qint64, expected);
        QCOMPARE(::numericCode(text), code(expected));
    }

    // The same rows run over films and over customers.
    void assigningCodes_data() {
        QTest::addColumn<QList<qint64>>("before");
        QTest::addColumn<QList<qint64>>("after");

        QTest::newRow("none present") << QList<qint64>{absent, absent, absent} << QList<qint64>{1, 2, 3};
        QTest::newRow("negative") << QList<qint64>{-4, 2} << QList<qint64>{3, 2};
        QTest::newRow("duplicate of a later code") << QList<qint64>{7, absent, 7, 8} << QList<qint64>{7, 9, 10, 8};
        QTest::newRow("top of the range") << QList<qint64>{std::numeric_limits<qint64>::max(), absent, 1}
                                          << QList<qint64>{std::numeric_limits<qint64>::max(), 2, 1};
    }
    void assigningCodes() {
        QFETCH(QList<qint64>, before);
        QFETCH(QList<qint64>, after);

        Store store;
        for (const qint64 value : before) {
            store.films.append({.id = QString::number(store.films.size()), .code = code(value)});
            store.customers.append({.id = QString::number(store.customers.size()), .code = code(value)});
        }
        const Store films = assigningFilmCodes(store);
        const Store customers = assigningCustomerCodes(store);
        for (qsizetype i = 0; i < before.size(); ++i) {
            QCOMPARE(films.films[i].code, after[i]);
            QCOMPARE(films.films[i].id, store.films[i].id);
            QCOMPARE(customers.customers[i].code, after[i]);
        }
        QCOMPARE(films.customers, store.customers);
        QCOMPARE(customers.films, store.films);
        QCOMPARE(assigningFilmCodes(films), films);
        QCOMPARE(assigningCustomerCodes(customers), customers);
    }
};

QTEST_APPLESS_MAIN(TestCodes)
#include "test_codes.moc"
