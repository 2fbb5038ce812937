#include "counter/Basket.h"
#include "records/DateText.h"

#include <QTest>

namespace {

const Instant start = parseDateTime("10/10/2026 10:00").value();

// "Tubarão" (catalogue, 2 copies, copy 1 out), "Alien" (release, 1 copy), "Rambo"
// (1 copy, out); customer Ana.
Store shop() {
    Store store;
    store.films = {{.id = "tub", .title = "Tubarão", .copies = 2, .price = 300, .code = 1},
                   {.id = "ali", .title = "Alien", .copies = 1, .price = 500, .code = 2, .release = true},
                   {.id = "ram", .title = "Rambo", .copies = 1, .price = 400, .code = 3}};
    store.customers = {{.id = "ana", .name = "Ana", .code = 1}};
    store.rentals = {{.id = "r0", .film = "tub", .customer = "ana", .copy = 1},
                     {.id = "r1", .film = "ram", .customer = "ana", .copy = 1}};
    return store;
}

Ruled<Store> rented(const QList<BasketTape>& tapes) {
    return basketRentedStore(shop(), {.tapes = tapes, .customer = "ana", .start = start, .finePerDay = 200});
}

} // namespace

class TestBasket : public QObject {
    Q_OBJECT

private slots:
    // Each tape is the rental a single save would make, due by its own category.
    void everyTapeAsASingleRental() {
        const auto result = rented({{"tub", 2}, {"ali", std::nullopt}});
        const Store& store = std::get<Store>(result);
        QCOMPARE(store.rentals.size(), 4);
        const Rental& catalogue = store.rentals.at(2);
        const Rental& release = store.rentals.at(3);
        QCOMPARE(catalogue.copy, 2);
        QCOMPARE(catalogue.due, automaticDue(start, false));
        QCOMPARE(release.copy, 1);
        QCOMPARE(release.due, automaticDue(start, true));
        QCOMPARE(release.price, 500);
        QCOMPARE(release.finePerDay, 200);
        QCOMPARE(store.entries.size(), 2);
        QCOMPARE(store.entries.at(1).description, "Locação: Alien / Ana");
        QCOMPARE(store.entries.at(1).amount, 500);

        const QList<BasketLine> lines = basketLines(shop(), {{"tub", 2}, {"ali", std::nullopt}}, start);
        QCOMPARE(lines.at(0).copyCode, "COD-0001-002");
        QCOMPARE(lines.at(1).due, automaticDue(start, true));
        QCOMPARE(basketTotal(lines), 800);
    }

    void oneTapeRefusedRentsNothing_data() {
        QTest::addColumn<QList<BasketTape>>("tapes");
        QTest::addColumn<QString>("refusal");
        QTest::newRow("third has no free copy")
            << QList<BasketTape>{{"tub", 2}, {"ali", std::nullopt}, {"ram", std::nullopt}}
            << "A fita COD-0003 — Rambo já está alugada ou não existe; nenhuma fita foi alugada.";
        QTest::newRow("same copy twice") << QList<BasketTape>{{"tub", 2}, {"ali", 1}, {"tub", 2}}
                                         << "A fita COD-0001-002 — Tubarão já está alugada ou não existe; nenhuma "
                                            "fita foi alugada.";
    }
    void oneTapeRefusedRentsNothing() {
        QFETCH(QList<BasketTape>, tapes);
        QFETCH(QString, refusal);
        const auto result = rented(tapes);
        QVERIFY(std::holds_alternative<RuleRefusal>(result));
        QCOMPARE(std::get<RuleRefusal>(result).text, refusal);
    }
};

QTEST_APPLESS_MAIN(TestBasket)
#include "test_basket.moc"
