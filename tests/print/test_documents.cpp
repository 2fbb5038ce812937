#include "exchange/CashDayExport.h"
#include "print/CashClosingPage.h"
#include "print/OverdueNotices.h"
#include "print/Receipt.h"
#include "records/CashDay.h"
#include "records/RentalRules.h"
#include "support/Files.h"
#include "support/MarkupCheck.h"

#include <QtTest>

namespace {

Instant utc(const char* iso) {
    return Instant::fromDateTime(QDateTime::fromString(QString::fromLatin1(iso), Qt::ISODate));
}

const Instant now = utc("2026-10-08T17:30:00Z"); // 14:30 in São Paulo
const QDate today(2026, 10, 8);

Rental rental(const QString& id, const QString& film, const QString& customer, qint64 copy, Instant due) {
    return Rental{.id = id,
                  .film = film,
                  .customer = customer,
                  .start = due.plusSeconds(-259200),
                  .due = due,
                  .price = 450,
                  .finePerDay = 300,
                  .copy = copy};
}

// A day at the counter; text stands in every place a store text is shown.
Store shop(const QString& text = QString()) {
    const auto or_ = [&](const char* plain) {
        return text.isNull() ? QString::fromUtf8(plain) : text;
    };
    Store store;
    store.locadoraName = or_("Vídeo & Cia D'Ouro");
    store.films = {Film{.id = "F1", .title = or_("DE VOLTA PARA O FUTURO"), .copies = 3, .price = 500, .code = 1},
                   Film{.id = "F2", .title = or_("O ILUMINADO <1980>"), .copies = 3, .price = 400, .code = 2},
                   Film{.id = "F3", .title = or_("CURTINDO A VIDA ADOIDADO"), .copies = 3, .price = 450, .code = 3}};
    store.customers = {Customer{.id = "C1",
                                .name = or_("MARIA D'ÁVILA & FILHOS"),
                                .phone = or_("(11) 98765-4321"),
                                .code = 1,
                                .address = or_("Rua das Flores, 123"),
                                .city = or_("São Paulo"),
                                .state = or_("SP"),
                                .zip = or_("01000-000")},
                       Customer{.id = "C2",
                                .name = or_("JOÃO \"JOCA\" DA SILVA"),
                                .phone = or_("(11) 3333-4444"),
                                .code = 2,
                                .city = or_("Osasco")}};
    // Three tapes rented now by C1; C2 late with two, C1 with one; one late tape came back.
    for (const Film& film : store.films) {
        Rental r = rental("R" + film.id.mid(1), film.id, "C1", film.code == 3 ? 2 : 1, now.plusSeconds(259200));
        r.start = now;
        r.price = film.price;
        store.rentals.append(r);
    }
    store.rentals.append(rental("R4", "F1", "C2", 2, utc("2026-10-05T21:00:00Z")));
    store.rentals.append(rental("R5", "F2", "C2", 2, utc("2026-10-07T23:00:00Z")));
    store.rentals.append(rental("R6", "F3", "C1", 1, utc("2026-10-06T13:00:00Z")));
    store.rentals.append(rental("R7", "F1", "C1", 3, utc("2026-10-01T13:00:00Z")));
    store = returnedStore(store, "R7", false, utc("2026-10-08T12:00:00Z"));
    for (Entry& entry : store.entries)
        entry.id = "E-return-" + entry.description.left(4);

    const auto entry = [&](const char* iso, const QString& description, qint64 amount) {
        store.entries.append(Entry{QStringLiteral("E%1").arg(store.entries.size()), utc(iso), description, amount});
    };
    entry("2026-10-08T02:59:59Z", "Locação: ontem", 1000); // 23:59:59 the day before
    entry("2026-10-08T17:30:00Z", "Locação: " + or_("DE VOLTA PARA O FUTURO") + " / " + or_("MARIA"), 500);
    entry("2026-10-08T17:30:00Z", "Locação: " + or_("O ILUMINADO") + " / " + or_("MARIA"), 400);
    entry("2026-10-08T17:30:00Z", "Locação: " + or_("CURTINDO A VIDA") + " / " + or_("MARIA"), 450);
    entry("2026-10-08T13:00:00Z", "Abono de multa: " + or_("DE VOLTA") + " — " + or_("cliente antigo"), -300);
    entry("2026-10-08T19:00:00Z", or_("Venda de pipoca \"doce\""), 350);
    entry("2026-10-09T02:59:59Z", or_("Estorno <locação> & troco"), -2000);
    entry("2026-10-09T03:00:00Z", "Locação: amanhã", 700); // 00:00:00 the next day
    return store;
}

const CounterAct threeTapes{ReceiptKind::rental, {"R1", "R2", "R3"}};

} // namespace

class TestDocuments : public QObject {
    Q_OBJECT

private slots:
    // An entry a second before or at a local midnight lands on the day its date text shows,
    // also where the day has 25 hours (an hour repeated; the day's lengths are the dates test's).
    void dayBoundaries_data() {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QStringList>("instants"); // last of the day before, first, last, first of the next
        QTest::newRow("ordinary day") << QDate(2026, 10, 8)
                                      << QStringList{"2026-10-08T02:59:59Z", "2026-10-08T03:00:00Z",
                                                     "2026-10-09T02:59:59.999Z", "2026-10-09T03:00:00Z"};
        QTest::newRow("25 hours") << QDate(2019, 2, 16)
                                  << QStringList{"2019-02-16T01:59:59Z", "2019-02-16T02:00:00Z", "2019-02-17T02:59:59Z",
                                                 "2019-02-17T03:00:00Z"};
    }
    void dayBoundaries() {
        QFETCH(QDate, day);
        QFETCH(QStringList, instants);
        Store store;
        qint64 amount = 1;
        for (const QString& instant : instants) {
            store.entries.append(Entry{"E", utc(instant.toLatin1().constData()), "Venda", amount});
            amount *= 10;
        }
        const CashDay closing = cashDay(store, day);
        QCOMPARE(closing.balance, 110);
        QCOMPARE(closing.bookBalance, 111);
        QCOMPARE(closing.group(CashKind::otherIncome).count, 2);
        QCOMPARE(cashDay(store, day.addDays(1)).balance, 1000);
    }

    void kinds_data() {
        QTest::addColumn<QString>("description");
        QTest::addColumn<qint64>("amount");
        QTest::addColumn<int>("kind");
        // Each group's own entries are counted in the closing text below.
        QTest::newRow("refund is no income")
            << "Devolução de locação: Alien" << qint64(-500) << int(CashKind::outgoings);
        QTest::newRow("prefix without colon") << "Locação avulsa" << qint64(-200) << int(CashKind::outgoings);
    }
    void kinds() {
        QFETCH(QString, description);
        QFETCH(qint64, amount);
        QFETCH(int, kind);
        QCOMPARE(int(cashKind(Entry{"E", now, description, amount})), kind);
    }

    void closingTextAndCSV() {
        const CashDay closing = cashDay(shop(), today);
        QCOMPARE(cashDayText(closing), QStringLiteral("GRUPO             QTD.             VALOR\n"
                                                      "LOCAÇÕES             3          R$ 13,50\n"
                                                      "MULTAS               1          R$ 21,00\n"
                                                      "REBOBINAGEM          1           R$ 1,00\n"
                                                      "ABONOS               1          -R$ 3,00\n"
                                                      "OUTRAS ENTRADAS      1           R$ 3,50\n"
                                                      "SAÍDAS               1         -R$ 20,00\n\n"
                                                      "SALDO DO DIA                    R$ 16,00\n"
                                                      "SALDO ACUMULADO                 R$ 26,00")
                                           .replace(QStringLiteral("R$ "), QStringLiteral("R$\u00a0")));
        const QStringList lines = cashDayCSV(closing).split(QStringLiteral("\r\n"));
        QCOMPARE(lines.size(), 9);
        QCOMPARE(lines[0], QStringLiteral("\ufeff\"DATA\";\"DESCRIÇÃO\";\"GRUPO\";\"VALOR\""));
        QVERIFY2(lines[1].startsWith(QStringLiteral("\"08/10/2026 09:00\";\"Multa: ")), qPrintable(lines[1]));
        QCOMPARE(lines[7], QStringLiteral("\"08/10/2026 16:00\";\"Venda de pipoca \"\"doce\"\"\";\"OUTRAS "
                                          "ENTRADAS\";\"R$\u00a03,50\""));
        QCOMPARE(cashDayCSVFileName(today), QStringLiteral("CINEFITA-caixa-2026-10-08.csv"));
    }

    // The three-tape receipt is the golden page's; a return's has none.
    void receipts() {
        const Store store = shop();
        const std::optional<Receipt> back = receiptOf(store, returnAct("R7"));
        QVERIFY(back);
        QCOMPARE(back->tapes[0].daysLate, 7);
        QCOMPARE(back->total, 2100 + 100);

        // F10 before any rental or return, or for a return not made: nothing.
        QCOMPARE(receiptPage(store, std::nullopt), QString());
        QCOMPARE(receiptPage(store, returnAct("R6")), QString());
        QCOMPARE(rentalAct(Store{}, store).rentals.size(), store.rentals.size());
    }

    // Order, days, totals and the returned tape left out are the golden page's;
    // with every tape back there is no page at all.
    void notices() {
        Store store = shop();
        for (const char* id : {"R4", "R5", "R6"})
            store = returnedStore(store, id, true, now);
        QVERIFY(!anyLateRental(store, now));
        QCOMPARE(overdueNoticesPage(store, now), QString());
    }

    // The pages as a browser was seen to draw them.
    void goldenPages_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("page");
        QTest::newRow("receipt") << "Recibo-exemplo.html" << receiptPage(shop(), threeTapes);
        QTest::newRow("notices") << "Avisos-de-atraso-exemplo.html" << overdueNoticesPage(shop(), now);
        QTest::newRow("closing") << "Fechamento-de-caixa-exemplo.html" << cashClosingPage(shop(), today);
    }
    void goldenPages() {
        QFETCH(QString, file);
        QFETCH(QString, page);
        const QString golden = fileText(QStringLiteral(CINEFITA_SOURCE_DIR "/tests/print/pages/documents/") + file);
        if (page != golden)
            writeFile(QDir::temp().filePath(file), page.toUtf8());
        QVERIFY2(page == golden, qPrintable("new page in " + QDir::temp().filePath(file)));
    }

    void userTextStaysText_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("attribute breakout") << "x' onload='alert(1)";
        QTest::newRow("apostrophe and markup") << "Joana D'Arc <b>&amp; \"Cia\"</b>";
    }
    void userTextStaysText() {
        QFETCH(QString, text);
        const Store given = shop(text), plain = shop(neutralText(text));
        QCOMPARE(markupDifference(receiptPage(given, threeTapes), receiptPage(plain, threeTapes)), QString());
        QCOMPARE(markupDifference(receiptPage(given, returnAct("R7")), receiptPage(plain, returnAct("R7"))), QString());
        QCOMPARE(markupDifference(overdueNoticesPage(given, now), overdueNoticesPage(plain, now)), QString());
        QCOMPARE(markupDifference(cashClosingPage(given, today), cashClosingPage(plain, today)), QString());
    }
};

QTEST_APPLESS_MAIN(TestDocuments)
#include "test_documents.moc"
