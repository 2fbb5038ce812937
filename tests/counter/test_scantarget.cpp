#include "counter/ScanTarget.h"
#include "records/MoneyText.h"
#include "support/Dates.h"

#include <QTest>

namespace {

const Instant now = at("15/10/2026 12:00");

Rental open(const QString& id, const QString& film, std::optional<qint64> copy,
            const QString& due = "20/10/2026 18:00") {
    return Rental{.id = id,
                  .film = film,
                  .customer = "ana",
                  .start = at("01/10/2026 10:00"),
                  .due = at(due),
                  .finePerDay = 200,
                  .copy = copy};
}

// "Tubarão" (1, 3 copies, copy 2 out), "Alien" (2, removed while copy 1 was out),
// "Rambo" (3, removed), "Ghost" (4, 2 copies, one out from before copy numbers);
// customers Ana (1) and Bia (2, removed).
Store shop() {
    Store store;
    store.films = {{.id = "tub", .title = "Tubarão", .copies = 3, .code = 1},
                   {.id = "ali", .title = "Alien", .copies = 2, .code = 2, .deleted = true},
                   {.id = "ram", .title = "Rambo", .copies = 1, .code = 3, .deleted = true},
                   {.id = "gho", .title = "Ghost", .copies = 2, .code = 4}};
    store.customers = {{.id = "ana", .name = "Ana", .code = 1},
                       {.id = "bia", .name = "Bia", .code = 2, .deleted = true}};
    Rental returned = open("r0", "tub", 1);
    returned.returned = now;
    store.rentals = {returned, open("r1", "tub", 2), open("r2", "ali", 1), open("r3", "gho", std::nullopt)};
    return store;
}

QString described(const ScanTarget& target) {
    if (const auto* back = std::get_if<ScanReturn>(&target))
        return QStringLiteral("devolver %1 %2 de %3").arg(back->rental.id, back->copyCode, back->customerName);
    if (const auto* rent = std::get_if<ScanRent>(&target))
        return QStringLiteral("alugar %1").arg(rent->copyCode);
    if (const auto* client = std::get_if<ScanCustomer>(&target))
        return QStringLiteral("cliente ") + client->customer.name;
    if (const auto* film = std::get_if<ScanFilm>(&target))
        return QStringLiteral("filme ") + film->film.title;
    return QStringLiteral("recusado: ") + std::get<RuleRefusal>(target).text;
}

} // namespace

class TestScanTarget : public QObject {
    Q_OBJECT

private slots:
    void codes_data() {
        QTest::addColumn<QString>("read");
        QTest::addColumn<QString>("target");
        const auto row = [](const char* read, const QString& target) {
            QTest::newRow(read) << read << target;
        };
        row("COD-0001-002", "devolver r1 COD-0001-002 de Ana");
        row(" cod-0001-002\t", "devolver r1 COD-0001-002 de Ana");
        row("0001-002", "devolver r1 COD-0001-002 de Ana");
        row("COD-0001-001", "alugar COD-0001-001");
        row("COD-0002-001", "devolver r2 COD-0002-001 de Ana");
        row("COD-0004-001", "devolver r3 COD-0004-001 de Ana");
        row("COD-0004-002", "alugar COD-0004-002");
        row("0001", "filme Tubarão");
        row("CLI-0001", "cliente Ana");
        row("COD-0001-004", "recusado: O código COD-0001-004 pede o exemplar 4, mas Tubarão tem 3 exemplares.");
        row("COD-0001-000", "recusado: O código COD-0001-000 pede o exemplar 0, mas Tubarão tem 3 exemplares.");
        row("COD-0002-002", "recusado: O código COD-0002-002 é de Alien, filme removido do acervo.");
        row("cod-0003", "recusado: O código COD-0003 é de Rambo, filme removido do acervo.");
        row("COD-0009-001", "recusado: O código COD-0009-001 não é de nenhuma fita cadastrada.");
        row("cli-0002", "recusado: O código CLI-0002 é de Bia, cliente removido do cadastro.");
        row("CLI-0009", "recusado: O código CLI-0009 não é de nenhum cliente cadastrado.");
        row("CLI-0001-002", "recusado: O texto lido, “CLI-0001-002”, não é código de fita nem de cliente.");
        row("COD-+001", "recusado: O texto lido, “COD-+001”, não é código de fita nem de cliente.");
        row("", "recusado: O texto lido, “”, não é código de fita nem de cliente.");
    }
    void codes() {
        QFETCH(QString, read);
        QFETCH(QString, target);
        QCOMPARE(described(scanTarget(shop(), read, now)), target);
    }

    void cardShowsTheDebtFirst() {
        Store store = shop();
        store.rentals.append(open("r4", "tub", 3, "12/10/2026 18:00"));
        store.rentals[2].due = at("14/10/2026 18:00"); // Alien, removed since
        const auto card = std::get<ScanCustomer>(scanTarget(store, "CLI-0001", now));
        QCOMPARE(card.late.size(), 2);
        QCOMPARE(card.totalFine, 800);
        QCOMPARE(lateRentalsText(card),
                 QStringLiteral("Alien (COD-0002-001) — devolução 14/10/2026 — 1 dia de atraso — %1\n"
                                "Tubarão (COD-0001-003) — devolução 12/10/2026 — 3 dias de atraso — %2\n"
                                "Total: %3")
                     .arg(money(200), money(600), money(800)));
    }

    // The reader keeps one index per store version: a tape returned since the last
    // scan is on the shelf at the next one.
    void readerFollowsTheStore() {
        ScanReader reader;
        const Store before = shop();
        QCOMPARE(described(reader.read(before, "COD-0001-002", now)), "devolver r1 COD-0001-002 de Ana");
        const Store after = returnedStore(before, "r1", true, now);
        QCOMPARE(described(reader.read(after, "COD-0001-002", now)), "alugar COD-0001-002");
        QVERIFY(reader.index(after).isFor(after));
        QVERIFY(!reader.index(after).isFor(before));
    }
};

QTEST_APPLESS_MAIN(TestScanTarget)
#include "test_scantarget.moc"
