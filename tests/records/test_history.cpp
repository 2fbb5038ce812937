#include "records/AdjustedReturn.h"
#include "records/History.h"
#include "support/Dates.h"

#include <QTest>

namespace {

Rental rental(const QString& id, const QString& film, const QString& customer, std::optional<qint64> copy,
              const QString& start, const QString& due) {
    return {.id = id,
            .film = film,
            .customer = customer,
            .start = at(start),
            .due = at(due),
            .finePerDay = 300,
            .copy = copy};
}

Store returnedAt(const Store& store, const QString& id, const QString& when, const QString& forgiven, bool rewound) {
    const auto checked = adjustedReturn(store, id, when, forgiven, QStringLiteral("chuva"), at(when).plusSeconds(60));
    return adjustedReturnedStore(store, std::get<AdjustedReturn>(checked), rewound);
}

const QString now = QStringLiteral("15/10/2026 12:00");

// Ana's rentals: "a" Alien (removed since) returned late unrewound, "b" a film gone
// from the store returned before returns were detailed, "c" Brazil open and late, "e"
// Alien returned by the drop box with its fine forgiven. João's "f" of Alien came
// back at the same instant with a larger fine, and comes first in the store.
Store shop() {
    Store store;
    store.films = {{.id = "f1", .title = "Alien", .copies = 2, .code = 1, .deleted = true},
                   {.id = "f2", .title = "Brazil", .copies = 1, .code = 2}};
    store.customers = {{.id = "c1", .name = "Ana Luísa", .code = 1}, {.id = "c2", .name = "João", .code = 2}};
    store.rentals = {rental("a", "f1", "c1", 2, "01/10/2026 10:00", "04/10/2026 10:00"),
                     rental("b", "f9", "c1", std::nullopt, "05/10/2026 10:00", "08/10/2026 10:00"),
                     rental("f", "f1", "c2", 2, "09/10/2026 10:00", "10/10/2026 10:00"),
                     rental("e", "f1", "c1", 1, "08/10/2026 10:00", "11/10/2026 10:00"),
                     rental("c", "f2", "c1", 1, "10/10/2026 10:00", "13/10/2026 10:00")};
    store.rentals[1].returned = at("08/10/2026 09:00");
    store = returnedAt(store, "a", "06/10/2026 09:00", "0,00", false);
    store = returnedAt(store, "e", "12/10/2026 21:00", "3,00", true);
    return returnedAt(store, "f", "12/10/2026 21:00", "0,00", true);
}

QStringList texts(const QList<HistoryRow>& rows) {
    QStringList result;
    for (const HistoryRow& row : rows)
        result.append(row.id + u':' + row.cells.join(u'|'));
    return result;
}

QStringList ids(const QList<HistoryRow>& rows) {
    QStringList result;
    for (const HistoryRow& row : rows)
        result.append(row.id);
    return result;
}

} // namespace

class TestHistory : public QObject {
    Q_OBJECT

private slots:
    void customer() {
        const Store store = shop();
        const auto rows = customerHistoryRows(store, "c1", at(now));
        QCOMPARE(
            texts(rows),
            (QStringList{
                "c:Brazil|COD-0002-001|10/10/2026 10:00|13/10/2026 10:00|EM ABERTO|R$\u00a06,00||",
                "e:Alien|COD-0001-001|08/10/2026 10:00|11/10/2026 10:00|12/10/2026 21:00|R$\u00a03,00|R$\u00a00,00|"
                "R$\u00a03,00",
                "b:—|—|05/10/2026 10:00|08/10/2026 10:00|08/10/2026 09:00|—|—|",
                "a:Alien|COD-0001-002|01/10/2026 10:00|04/10/2026 10:00|06/10/2026 09:00|R$\u00a06,00|R$\u00a01,00|",
            }));
        QCOMPARE(customerHistoryColumns().size(), rows.first().cells.size());

        const HistorySummary summary = customerHistorySummary(store, "c1", at(now));
        QCOMPARE(summary, (HistorySummary{
                              .rentals = 4, .open = 1, .late = 1, .finesPaid = 600, .feesPaid = 100, .forgiven = 300}));
        QCOMPARE(historySummaryText(summary),
                 QStringLiteral("LOCAÇÕES: 4  │  EM ABERTO: 1  │  ATRASADAS: 1  │  MULTAS PAGAS: R$\u00a06,00  │  "
                                "TAXAS PAGAS: R$\u00a01,00  │  ABONOS: R$\u00a03,00"));
        QCOMPARE(forgivenFines(store), (QHash<QString, qint64>{{"e", 300}}));
    }

    void film() {
        const auto rows = filmHistoryRows(shop(), "f1", at(now));
        QCOMPARE(texts(rows),
                 (QStringList{
                     "f:COD-0001-002|João|09/10/2026 10:00|10/10/2026 10:00|12/10/2026 21:00|R$\u00a06,00",
                     "e:COD-0001-001|Ana Luísa|08/10/2026 10:00|11/10/2026 10:00|12/10/2026 21:00|R$\u00a03,00",
                     "a:COD-0001-002|Ana Luísa|01/10/2026 10:00|04/10/2026 10:00|06/10/2026 09:00|R$\u00a06,00",
                 }));
        QCOMPARE(filmHistoryColumns().size(), rows.first().cells.size());
    }

    void search_data() {
        QTest::addColumn<bool>("ofFilm");
        QTest::addColumn<QString>("query");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("customer, accents folded") << true << "\t joao " << QStringList{"f"};
        QTest::newRow("copy code") << true << "cod-0001-002" << QStringList{"f", "a"};
        QTest::newRow("film rows not by date") << true << "06/10" << QStringList{};
        QTest::newRow("empty keeps all") << true << "  " << QStringList{"f", "e", "a"};
        QTest::newRow("customer's rows by any cell") << false << "em aberto" << QStringList{"c"};
    }
    void search() {
        QFETCH(bool, ofFilm);
        QFETCH(QString, query);
        QFETCH(QStringList, expected);
        const Store store = shop();
        const auto rows = ofFilm ? filmHistoryRows(store, "f1", at(now)) : customerHistoryRows(store, "c1", at(now));
        QCOMPARE(ids(searchedHistory(rows, query)), expected);
    }
};

QTEST_APPLESS_MAIN(TestHistory)
#include "test_history.moc"
