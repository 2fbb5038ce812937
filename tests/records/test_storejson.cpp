#include "records/StoreJSON.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace {

Store fullStore() {
    Store store;
    store.reportRentalBaseline = 3;
    store.locadoraName = QStringLiteral("Vídeo & Cia");
    store.films = {Film{"F1", "Ação Total", "Ação, Drama", 2, 550, 7, 1994, false,
                        QStringLiteral("Primeira linha\nSegunda linha: ação, coração, pão"), "Total Action", true}};
    store.customers = {
        Customer{"C1", "Maria Conceição", "(11) 987654321", 12, "Rua A, 10", "São Paulo", "SP", "01000-000", true}};
    // Dates whose shortest decimal form needs every digit.
    store.rentals = {Rental{"R1", "F1", "C1", Instant{812345678.123456789}, Instant{0.1 + 0.2}, Instant{700200000.5},
                            550, 300, 600, false, 100, 2}};
    store.entries = {Entry{"E1", Instant{-1234.75}, "Multa: Ação Total", 600},
                     Entry{"E2", Instant{700000000}, "Saída", -2500}};
    return store;
}

Store sparseStore() {
    Store store;
    store.films = {Film{"F1", "Filme", "Drama", 1, 500}};
    store.customers = {Customer{"C1", "Ana", ""}};
    store.rentals = {Rental{"R1", "F1", "C1", Instant{1}, Instant{2}, std::nullopt, 500, 200}};
    return store;
}

} // namespace

class TestStoreJSON : public QObject {
    Q_OBJECT

private slots:
    void roundTrip_data() {
        QTest::addColumn<Store>("store");
        QTest::addColumn<int>("layout");
        for (auto layout : {JSONLayout::compact, JSONLayout::sortedIndented}) {
            const char* name = layout == JSONLayout::compact ? "compact" : "indented";
            QTest::addRow("every optional present, %s", name) << fullStore() << int(layout);
            QTest::addRow("every optional absent, %s", name) << sparseStore() << int(layout);
            QTest::addRow("empty, %s", name) << Store{} << int(layout);
        }
    }
    void roundTrip() {
        QFETCH(Store, store);
        QFETCH(int, layout);
        const QByteArray json = encodeStore(store, JSONLayout(layout));
        QVERIFY(!json.contains("null"));
        QCOMPARE(decodeStore(json), store);
    }

    void smallestDocumentAndNullOptionals() {
        QCOMPARE(decodeStore(R"({"films":[],"customers":[],"rentals":[],"entries":[]})"), Store{});
        QVERIFY_THROWS_EXCEPTION(
            StoreJSONError,
            decodeStore("\xEF\xBB\xBF\xEF\xBB\xBF{\"films\":[],\"customers\":[],\"rentals\":[],\"entries\":[]}"));
        const Store store = decodeStore(
            R"({"films":[{"id":"a","title":"t","genre":"g","copies":1,"price":2,"code":null,"sinapse":null,"x":5}],
                "customers":[],"rentals":[],"entries":[],"locadoraName":null,"unknown":{"deep":[1,2]}})");
        QCOMPARE(store.films.size(), 1);
        QVERIFY(!store.films[0].code);
        QVERIFY(!store.films[0].sinapse);
        QVERIFY(!store.locadoraName);
    }

    void integersAreReadExactly_data() {
        QTest::addColumn<QByteArray>("literal");
        QTest::addColumn<qint64>("expected");
        QTest::newRow("2^53 + 1 with a zero fraction") << QByteArray("9007199254740993.0") << qint64(9007199254740993);
        QTest::newRow("smallest") << QByteArray("-9223372036854775808") << std::numeric_limits<qint64>::min();
        QTest::newRow("largest, as an exponent")
            << QByteArray("922337203685477580.7e1") << std::numeric_limits<qint64>::max();
        QTest::newRow("whole after the exponent") << QByteArray("1200e-2") << qint64(12);
        QTest::newRow("negative zero") << QByteArray("-0.0") << qint64(0);
    }
    void integersAreReadExactly() {
        QFETCH(QByteArray, literal);
        QFETCH(qint64, expected);
        const Store store = decodeStore(R"({"films":[],"customers":[],"rentals":[],"entries":[],)"
                                        R"("reportRentalBaseline":)" +
                                        literal + "}");
        QCOMPARE(store.reportRentalBaseline, expected);
    }

    void agreesWithQtJsonOnAwkwardTexts() {
        Store store = sparseStore();
        store.films[0].title = QString::fromUtf8("aspas \" barra \\ / tab\t nul\x01 fim\r\n 🎞️ ç");
        store.films[0].sinapse = QString(QChar(0x1F)) + QStringLiteral("\u2028 linha");
        const QByteArray ours = encodeStore(store);
        QJsonParseError error{};
        const QJsonDocument theirs = QJsonDocument::fromJson(ours, &error);
        QCOMPARE(error.error, QJsonParseError::NoError);
        QCOMPARE(theirs.object()["films"].toArray()[0].toObject()["title"].toString(), store.films[0].title);
        QCOMPARE(decodeStore(theirs.toJson(QJsonDocument::Compact)), store);
        QCOMPARE(decodeStore(theirs.toJson(QJsonDocument::Indented)), store);
        QCOMPARE(decodeStore(R"({"films":[],"customers":[],"rentals":[],"entries":[],)"
                             R"("locadoraName":"\u00c7\ud83c\udf9e\/"})")
                     .locadoraName,
                 std::optional(QString::fromUtf8("Ç🎞/")));
    }

    void everyTruncationIsRefusedCleanly() {
        const QByteArray json = encodeStore(fullStore(), JSONLayout::sortedIndented);
        for (qsizetype length = 0; length < json.size(); ++length)
            QVERIFY_THROWS_EXCEPTION(StoreJSONError, decodeStore(json.left(length)));
    }

    void damagedBytesAreRefused_data() {
        QTest::addColumn<QByteArray>("json");
        const QByteArray head = R"({"films":[],"customers":[],"rentals":[],"entries":[],"locadoraName":)";
        QTest::newRow("invalid UTF-8") << head + "\"a\xff\"}";
        QTest::newRow("overlong UTF-8") << head + "\"a\xe0\x80\x80\"}";
        QTest::newRow("encoded surrogate") << head + "\"a\xed\xa0\x80\"}";
        QTest::newRow("raw line break in text") << head + "\"a\nb\"}";
        QTest::newRow("lone surrogate escape") << head + R"("\ud800"})";
        QTest::newRow("trailing text") << head + R"("a"} x)";
        QTest::newRow("NUL after the document") << head + QByteArray("\"a\"}\0garbage", 12);
        QTest::newRow("trailing comma") << QByteArray(R"({"films":[],"customers":[],"rentals":[],"entries":[],})");
        QTest::newRow("leading zero") << QByteArray(
            R"({"films":[],"customers":[],"rentals":[],"entries":[],"reportRentalBaseline":01})");
        QTest::newRow("deep nesting") << QByteArray(R"({"x":)") + QByteArray(100000, '[');
    }
    void damagedBytesAreRefused() {
        QFETCH(QByteArray, json);
        QVERIFY_THROWS_EXCEPTION(StoreJSONError, decodeStore(json));
    }

    void anyStoredDateConvertsSafely() {
        for (const double seconds : {1e300, -1e300, 8e15, -0.0})
            QVERIFY(Instant{seconds}.toDateTime().isValid());
        QVERIFY(Instant{1e300}.toDateTime() > Instant{1e12}.toDateTime());
    }

    void rejected_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("mentions");
        const QByteArray lists = R"("customers":[],"rentals":[],"entries":[])";
        const auto film = [&](const QByteArray& members) {
            return QByteArray(R"({"films":[{"id":"a","title":"t","genre":"g",)" + members + "}]," + lists + "}");
        };
        QTest::newRow("not JSON") << QByteArray("{films:") << "JSON";
        QTest::newRow("not an object") << QByteArray("[]") << "objeto";
        QTest::newRow("no entries") << QByteArray(R"({"films":[],"customers":[],"rentals":[]})") << "entries";
        QTest::newRow("record not an object") << QByteArray(R"({"films":[3],)" + lists + "}") << "films";
        QTest::newRow("missing title") << QByteArray(R"({"films":[{"id":"a","genre":"g","copies":1,"price":2}],)" +
                                                     lists + "}")
                                       << "title";
        QTest::newRow("price as text") << film(R"("copies":1,"price":"2")") << "price";
        QTest::newRow("deleted as number") << film(R"("copies":1,"price":2,"deleted":1)") << "deleted";
        QTest::newRow("start as text")
            << QByteArray(R"({"films":[],"customers":[],"rentals":[{"id":"r","film":"f","customer":"c",)"
                          R"("start":"2020-01-01","due":1,"price":1,"finePerDay":1}],"entries":[]})")
            << "start";
        // Integers must be whole and fit in 64 bits exactly.
        QTest::newRow("a half past 2^62") << film(R"("copies":1,"price":4611686018427387904.5)") << "price";
        QTest::newRow("one below 64 bits") << film(R"("copies":-9223372036854775809,"price":1)") << "copies";
        QTest::newRow("an exponent past 64 bits") << film(R"("copies":1,"price":1e999999999999)") << "price";
    }
    void rejected() {
        QFETCH(QByteArray, json);
        QFETCH(QString, mentions);
        try {
            decodeStore(json);
            QFAIL("document was accepted");
        } catch (const StoreJSONError& error) {
            QVERIFY2(error.description().contains(mentions), qPrintable(error.description()));
        }
    }
};

QTEST_APPLESS_MAIN(TestStoreJSON)
#include "test_storejson.moc"
