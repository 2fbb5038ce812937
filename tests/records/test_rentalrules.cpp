#include "records/FilmCSVError.h"
#include "records/RentalRules.h"
#include "support/Dates.h"
#include "support/Zones.h"

#include <QTest>
#include <limits>

namespace {

constexpr qint64 none = -1; // stands for an absent copy in the tables

Rental rental(const QString& id, const QString& film, qint64 copy, bool open = true) {
    Rental r{.id = id, .film = film, .customer = "c1", .due = at("10/10/2026 18:00"), .finePerDay = 300};
    if (!open)
        r.returned = r.due;
    if (copy != none)
        r.copy = copy;
    return r;
}

// "Tubarão" with a returned rental "r0" and an open one "r1" due 10/10/2026 18:00.
Store shop() {
    Store store;
    store.films = {{.id = "f1", .title = "Tubarão", .copies = 2}};
    store.rentals = {rental("r0", "f1", 2, false), rental("r1", "f1", 1)};
    return store;
}

QStringList lines(const QList<Entry>& entries) {
    QStringList result;
    for (const Entry& entry : entries)
        result.append(entry.description + u'=' + QString::number(entry.amount));
    return result;
}

struct DueCase {
    QString zone, start;
    bool release;
    QString due;
};
struct OverdueCase {
    QString zone, due, now;
    qint64 days;
    double dueShift = 0; // seconds added to the due time
};
struct RentCase {
    QString film, customer;
    qint64 copy;     // none: the lowest free one
    QString refusal; // "title: text"; empty when the rental is made
    qint64 rentedCopy;
};
struct CashCase {
    QString description, kind, amount;
    QString refusal; // "title: text"; "-" for a silent one
    qint64 amountKept;
};
struct ReturnCase {
    QString now;
    bool rewound;
    qint64 fine;
    QStringList entries;
};

} // namespace

class TestRentalRules : public QObject {
    Q_OBJECT

private slots:
    // Elapsed seconds, whatever the clock does in between.
    void automaticDue_data() {
        QTest::addColumn<DueCase>("c");
        QTest::newRow("Berlin 23-hour day") << DueCase{"Europe/Berlin", "29/03/2025 12:00", true, "30/03/2025 13:00"};
        QTest::newRow("Berlin 25-hour day") << DueCase{"Europe/Berlin", "25/10/2025 12:00", true, "26/10/2025 11:00"};
        QTest::newRow("São Paulo midnight skipped")
            << DueCase{"America/Sao_Paulo", "03/11/2018 12:00", false, "06/11/2018 13:00"};
    }
    void automaticDue() {
        QFETCH(DueCase, c);
        if (!inZone(c.zone))
            QSKIP("other zone");
        const Instant to = ::automaticDue(at(c.start), c.release);
        QCOMPARE(to.seconds - at(c.start).seconds, c.release ? 86400.0 : 259200.0);
        QCOMPARE(dateTimeText(to), c.due);
    }

    void overdue_data() {
        QTest::addColumn<OverdueCase>("c");
        QTest::newRow("early") << OverdueCase{"", "10/10/2026 18:00", "08/10/2026 09:00", 0};
        QTest::newRow("Berlin 23-hour day") << OverdueCase{"Europe/Berlin", "30/03/2025 12:00", "31/03/2025 00:00", 1};
        QTest::newRow("Berlin 25-hour day") << OverdueCase{"Europe/Berlin", "26/10/2025 10:00", "27/10/2025 10:00", 1};
        QTest::newRow("São Paulo midnight skipped")
            << OverdueCase{"America/Sao_Paulo", "03/11/2018 12:00", "04/11/2018 01:00", 1};
        QTest::newRow("due a breath before midnight")
            << OverdueCase{"", "11/10/2026 00:00", "11/10/2026 09:00", 1, -0.0004};
    }
    void overdue() {
        QFETCH(OverdueCase, c);
        if (!inZone(c.zone))
            QSKIP("other zone");
        Rental late = rental("r", "f", 1);
        late.due = at(c.due).plusSeconds(c.dueShift);
        QCOMPARE(::overdue(late, at(c.now)), c.days);
    }

    // Of a film's three copies, with the copies its open rentals hold (none: a legacy rental without a copy).
    void freeCopy_data() {
        QTest::addColumn<QList<qint64>>("held");
        QTest::addColumn<qint64>("expected");
        QTest::newRow("lowest gap") << QList<qint64>{2} << qint64(1);
        QTest::newRow("legacy takes what is left") << QList<qint64>{none, 1} << qint64(3);
    }
    void freeCopy() {
        QFETCH(QList<qint64>, held);
        QFETCH(qint64, expected);
        Store store;
        // Returned rentals and other films' rentals hold nothing.
        store.rentals = {rental("a", "f", 1, false), rental("b", "f", none, false), rental("c", "g", 1)};
        for (const qint64 copy : held)
            store.rentals.append(rental("r", "f", copy));
        QCOMPARE(::freeCopy(store, Film{.id = "f", .copies = 3}).value_or(none), expected);
    }

    // Copy codes as the rental screen's film field receives them.
    void requestedCopy_data() {
        QTest::addColumn<QString>("code");
        QTest::addColumn<qint64>("copy");
        QTest::newRow("copy code") << "COD-0001-002" << qint64(2);
        QTest::newRow("surrounding spaces") << " COD-0001-3 " << qint64(3);
        QTest::newRow("film code") << "COD-0001" << none;
        QTest::newRow("space inside the copy") << "COD-0001- 2" << none;
        QTest::newRow("signed copy") << "COD-0001-+2" << none;
        QTest::newRow("empty copy") << "COD-0001-" << none;
        QTest::newRow("beyond 64 bits") << "COD-0001-99999999999999999999" << none;
    }
    void requestedCopy() {
        QFETCH(QString, code);
        QFETCH(qint64, copy);
        QCOMPARE(::requestedCopy(code).value_or(none), copy);
    }

    // shop() plus a removed film and a removed customer; copy 1 of "Tubarão" is out.
    void rented_data() {
        QTest::addColumn<RentCase>("c");
        const QString choose =
            "Selecione filme e cliente: Escolha um filme disponível e um cliente cadastrado nas listas de pesquisa.";
        const QString taken = "Exemplar indisponível: Esta fita já está alugada ou não existe.";
        QTest::newRow("lowest free copy") << RentCase{"f1", "c1", none, "", 2};
        QTest::newRow("asked-for copy") << RentCase{"f1", "c1", 2, "", 2};
        QTest::newRow("copy out") << RentCase{"f1", "c1", 1, taken, none};
        QTest::newRow("copy past the copies") << RentCase{"f1", "c1", 3, taken, none};
        QTest::newRow("unknown film") << RentCase{"nope", "c1", none, choose, none};
        QTest::newRow("removed film") << RentCase{"f2", "c1", none, choose, none};
        QTest::newRow("removed customer") << RentCase{"f1", "c2", none, choose, none};
        QTest::newRow("no copy free") << RentCase{"f3", "c1", none, choose, none};
    }
    void rented() {
        QFETCH(RentCase, c);
        Store before = shop();
        before.films[0].price = 550;
        before.films += {Film{.id = "f2", .title = "Apagado", .copies = 1, .deleted = true},
                         Film{.id = "f3", .title = "Esgotado", .copies = 0}};
        before.customers = {Customer{.id = "c1", .name = "Ana"}, Customer{.id = "c2", .name = "Zé", .deleted = true}};
        const RentalRequest request{.film = c.film,
                                    .customer = c.customer,
                                    .copy = c.copy == none ? std::nullopt : std::optional(c.copy),
                                    .start = at("10/10/2026 10:00"),
                                    .due = at("13/10/2026 10:00"),
                                    .finePerDay = 300};
        const Ruled<Store> result = rentedStore(before, request);
        if (const auto* refusal = std::get_if<RuleRefusal>(&result)) {
            QCOMPARE(refusal->title + ": " + refusal->text, c.refusal);
            return;
        }
        QVERIFY2(c.refusal.isEmpty(), "rented where the rule should refuse");
        const Store& after = std::get<Store>(result);
        QCOMPARE(after.rentals.size(), before.rentals.size() + 1);
        const Rental& made = after.rentals.last();
        QCOMPARE(QStringList({made.film, made.customer}), QStringList({"f1", "c1"}));
        QCOMPARE(made.copy, std::optional(c.rentedCopy));
        QCOMPARE(QList<qint64>({made.price, made.finePerDay}), QList<qint64>({550, 300}));
        QCOMPARE(QList<Instant>({made.start, made.due}), QList<Instant>({request.start, request.due}));
        QVERIFY(isOpen(made));
        QCOMPARE(lines(after.entries), QStringList{"Locação: Tubarão / Ana=550"});
        QCOMPARE(after.entries.last().date, request.start);
    }

    void cashEntry_data() {
        QTest::addColumn<CashCase>("c");
        QTest::newRow("entrada") << CashCase{"Troco", "ENTRADA", "10,50", "", 1050};
        QTest::newRow("saída, any case, no accent") << CashCase{"Luz", "Saida", "3", "", -300};
        QTest::newRow("unknown kind") << CashCase{"Luz", "sangria", "3", "Tipo inválido: Informe entrada ou saída.", 0};
        QTest::newRow("no description") << CashCase{"", "ENTRADA", "3", "-", 0};
        QTest::newRow("zero") << CashCase{"Luz", "ENTRADA", "0", "-", 0};
        QTest::newRow("unreadable") << CashCase{"Luz", "ENTRADA", "três", "-", 0};
    }
    void cashEntry() {
        QFETCH(CashCase, c);
        const Ruled<Store> result = cashEntryStore(shop(), c.description, c.kind, c.amount, at("10/10/2026 10:00"));
        if (const auto* refusal = std::get_if<RuleRefusal>(&result)) {
            QCOMPARE(refusal->silent() ? "-" : refusal->title + ": " + refusal->text, c.refusal);
            return;
        }
        QVERIFY2(c.refusal.isEmpty(), "entered where the rule should refuse");
        QCOMPARE(lines(std::get<Store>(result).entries),
                 QStringList{c.description + '=' + QString::number(c.amountKept)});
    }

    // What a late rental shows before its return: the fine it would be charged.
    void lateAndFineSoFar() {
        Rental open = shop().rentals[1];
        QVERIFY(!isLate(open, at("10/10/2026 18:00")));
        QVERIFY(isLate(open, at("10/10/2026 18:01")));
        QCOMPARE(fineSoFar(open, at("12/10/2026 09:00")), 600);
        open.finePerDay = std::numeric_limits<qint64>::max() / 2;
        QCOMPARE(fineSoFar(open, at("13/10/2026 09:00")), std::numeric_limits<qint64>::max());
        open.returned = at("13/10/2026 09:00");
        QVERIFY(!isLate(open, at("14/10/2026 09:00")));
    }

    void returned_data() {
        QTest::addColumn<ReturnCase>("c");
        QTest::newRow("late, not rewound")
            << ReturnCase{"12/10/2026 09:00", false, 600, {"Multa: Tubarão=600", "Taxa de rebobinagem: Tubarão=100"}};
        QTest::newRow("on time, rewound") << ReturnCase{"10/10/2026 23:00", true, 0, {}};
        QTest::newRow("late, rewound") << ReturnCase{"11/10/2026 08:00", true, 300, {"Multa: Tubarão=300"}};
    }
    void returned() {
        QFETCH(ReturnCase, c);
        const Store before = shop();
        const Store after = returnedStore(before, "r1", c.rewound, at(c.now));
        Rental expected = before.rentals[1];
        expected.returned = at(c.now);
        expected.fine = c.fine;
        expected.rewound = c.rewound;
        expected.rewindFee = c.rewound ? 0 : 100;
        QCOMPARE(after.rentals, (QList<Rental>{before.rentals[0], expected}));
        QCOMPARE(lines(after.entries), c.entries);
        for (const Entry& entry : after.entries)
            QCOMPARE(entry.date, at(c.now));
    }

    void returningTwiceFails() {
        const Store once = returnedStore(shop(), "r1", false, at("10/10/2026 20:00"));
        for (const char* id : {"r1", "r0", "nobody"}) {
            try {
                returnedStore(once, id, false, at("11/10/2026 20:00"));
                QFAIL("returned a rental that was not open");
            } catch (const FilmCSVError& error) {
                QCOMPARE(error.description(), "Esta fita já foi devolvida.");
            }
        }
        QCOMPARE(lines(once.entries), QStringList{"Taxa de rebobinagem: Tubarão=100"});
    }

    void returnsTheOpenOneUnderItsId() {
        Store store = shop();
        store.rentals[0].id = "r1";
        store.films.clear();
        const Store after = returnedStore(store, "r1", false, at("11/10/2026 09:00"));
        QCOMPARE(after.rentals[0], store.rentals[0]);
        QVERIFY(after.rentals[1].returned);
        QCOMPARE(lines(after.entries), (QStringList{"Multa: Fita=300", "Taxa de rebobinagem: Fita=100"}));
    }
};

QTEST_APPLESS_MAIN(TestRentalRules)
#include "test_rentalrules.moc"
