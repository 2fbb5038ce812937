#include "records/Codes.h"

#include <QTest>

namespace {

// Codes as a list where a null QVariant stands for an absent code.
QVariantList filmCodes(const Store& store) {
    QVariantList codes;
    for (const Film& film : store.films)
        codes.append(film.code ? QVariant::fromValue(*film.code) : QVariant());
    return codes;
}

QVariantList customerCodes(const Store& store) {
    QVariantList codes;
    for (const Customer& customer : store.customers)
        codes.append(customer.code ? QVariant::fromValue(*customer.code) : QVariant());
    return codes;
}

std::optional<qint64> codeAt(const QVariantList& codes, qsizetype i) {
    return codes[i].isNull() ? std::nullopt : std::optional<qint64>(codes[i].toLongLong());
}

QVariantList numbers(std::initializer_list<QVariant> values) {
    return QVariantList(values);
}

} // namespace

class TestCodes : public QObject {
    Q_OBJECT

private slots:
    void texts() {
        QCOMPARE(inventoryCode(1), "COD-0001");
        QCOMPARE(inventoryCode(12345), "COD-12345");
        QCOMPARE(inventoryCode(std::nullopt), "COD-0000");
        QCOMPARE(filmCode(Film{.code = 1}), "0001");
        QCOMPARE(filmCode(Film{}), "0000");
        QCOMPARE(copyCode(1, 2), "COD-0001-002");
        QCOMPARE(copyCode(42, 1234), "COD-0042-1234");
        QCOMPARE(customerCode(Customer{.code = 7}), "0007");
        QCOMPARE(customerCode(Customer{}), "0000");
        QCOMPARE(customerCardCode(7), "CLI-0007");
    }

    void numericCode_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QVariant>("expected");

        QTest::newRow("film") << "COD-0001" << QVariant(1);
        QTest::newRow("lower case") << "cod-0001" << QVariant(1);
        QTest::newRow("copy gives its film") << "COD-0001-002" << QVariant(1);
        QTest::newRow("card, spaced") << " cli-0042 " << QVariant(42);
        QTest::newRow("empty pieces dropped") << "COD--5" << QVariant(5);
        QTest::newRow("bare") << "0012" << QVariant(12);
        QTest::newRow("line breaks") << "\n0012\t" << QVariant(12);
        QTest::newRow("signed") << "-3" << QVariant(-3);
        QTest::newRow("largest") << "9223372036854775807" << QVariant(Q_INT64_C(9223372036854775807));
        QTest::newRow("prefix alone") << "COD-" << QVariant();
        QTest::newRow("letter in code") << "COD-12A" << QVariant();
        QTest::newRow("space inside") << "12 34" << QVariant();
        QTest::newRow("space after prefix") << "COD- 5" << QVariant();
        QTest::newRow("other prefix") << "ABC-0001" << QVariant();
        QTest::newRow("letters") << "abc" << QVariant();
        QTest::newRow("empty") << "" << QVariant();
        QTest::newRow("sign alone") << "+" << QVariant();
        QTest::newRow("overflow") << "9223372036854775808" << QVariant();
        QTest::newRow("non-ASCII digits") << "\u0661\u0662" << QVariant();
    }
    void numericCode() {
        QFETCH(QString, text);
        QFETCH(QVariant, expected);
        const auto code = ::numericCode(text);
        QCOMPARE(code.has_value(), !expected.isNull());
        if (code)
            QCOMPARE(*code, expected.toLongLong());
    }

    void numericCodeReadsWhatIsPrinted() {
        for (const qint64 code : {qint64(1), qint64(999), qint64(12345)}) {
            QCOMPARE(::numericCode(inventoryCode(code)), code);
            QCOMPARE(::numericCode(copyCode(code, 3)), code);
            QCOMPARE(::numericCode(customerCardCode(code)), code);
            QCOMPARE(::numericCode(customerCode(Customer{.code = code})), code);
        }
    }

    // The same rows are run over films and over customers.
    void assigningCodes_data() {
        QTest::addColumn<QVariantList>("before");
        QTest::addColumn<QVariantList>("after");

        QTest::newRow("absent, duplicate, zero") << numbers({{}, 3, 3, 0, 1}) << numbers({4, 3, 5, 6, 1});
        QTest::newRow("none present") << numbers({{}, {}, {}}) << numbers({1, 2, 3});
        QTest::newRow("all valid") << numbers({5, 2, 9}) << numbers({5, 2, 9});
        QTest::newRow("negative") << numbers({-4, 2}) << numbers({3, 2});
        QTest::newRow("duplicate of a later code") << numbers({7, {}, 7, 8}) << numbers({7, 9, 10, 8});
        QTest::newRow("empty") << QVariantList() << QVariantList();
        QTest::newRow("top of the range")
            << numbers({Q_INT64_C(9223372036854775807), {}, 1}) << numbers({Q_INT64_C(9223372036854775807), 2, 1});
    }
    void assigningCodes() {
        QFETCH(QVariantList, before);
        QFETCH(QVariantList, after);

        Store store;
        store.locadoraName = QStringLiteral("Vídeo Centro");
        for (qsizetype i = 0; i < before.size(); ++i) {
            store.films.append(Film{.id = QString::number(i), .title = QStringLiteral("F"), .code = codeAt(before, i)});
            store.customers.append(
                Customer{.id = QString::number(i), .name = QStringLiteral("C"), .code = codeAt(before, i)});
        }

        const Store films = assigningFilmCodes(store);
        QCOMPARE(filmCodes(films), after);
        QCOMPARE(films.customers, store.customers);
        QCOMPARE(films.locadoraName, store.locadoraName);
        QCOMPARE(assigningFilmCodes(films), films);

        const Store customers = assigningCustomerCodes(store);
        QCOMPARE(customerCodes(customers), after);
        QCOMPARE(customers.films, store.films);
        QCOMPARE(assigningCustomerCodes(customers), customers);
        for (qsizetype i = 0; i < before.size(); ++i)
            QCOMPARE(customers.customers[i].id, QString::number(i));
    }
};

QTEST_APPLESS_MAIN(TestCodes)
#include "test_codes.moc"
