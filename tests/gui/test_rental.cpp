#include "gui/GuiSupport.h"
#include "support/Builders.h"

#include "look/DOSSearchField.h"
#include "look/DOSTable.h"
#include "records/DateText.h"
#include "records/MoneyText.h"
#include "widgets/MatchList.h"

#include <QTableView>

namespace {

const Instant now{800000000}; // 09/05/2026 03:13 in São Paulo

// TUBARÃO has copy 2 out, ALIEN its only copy, GREMLINS was removed; two customers share a name.
Store shop() {
    Store store;
    store.films = counterFilms(4);
    store.customers = {
        Customer{.id = "C1", .name = "MARIA SILVA", .phone = "(11) 5555-0101", .code = 1},
        Customer{.id = "C2", .name = "JOÃO", .phone = "(11) 5555-0102", .code = 2},
        Customer{.id = "C3", .name = "João", .phone = "(11) 5555-0103", .code = 3},
    };
    for (const auto& [film, copy] : {std::pair{"F1", 2}, std::pair{"F2", 1}})
        store.rentals.append(Rental{.id = QStringLiteral("OUT-") + film,
                                    .film = film,
                                    .customer = "C2",
                                    .start = now,
                                    .due = now.plusSeconds(86400),
                                    .price = 100,
                                    .finePerDay = 100,
                                    .copy = copy});
    return store;
}

struct RentalShop : ShopOnDisk {
    RentalShop() : ShopOnDisk(now) {}
    bool open(const Store& store = shop()) {
        if (!launch(store))
            return false;
        app->enterProgram();
        press(Qt::Key_F3);
        return app->screen.formView != nullptr;
    }
    // Types as the operator does: into the focused field, replacing what it holds.
    void typeInto(const QString& key, const QString& text) const {
        QLineEdit* target = key == "search" ? static_cast<QLineEdit*>(app->search) : field(key);
        app->focus(target);
        target->selectAll();
        typeText(target, text);
    }
    void click(const QString& action) const {
        QVERIFY(button(action) != nullptr);
        button(action)->click();
    }
};

// A title goes through the shop's search field, which types it into the film field.
struct SaveCase {
    const char* name;
    QString code, title, client, start;
    int listed;
    QString refusal;
};
const QString chooseFirst = "Selecione filme e cliente";
const SaveCase saveCases[] = {
    {"code, name typed in full", "1", "", "maria silva", "", 0, ""},
    {"title typed, never chosen", "", "TUB", "MARIA SILVA", "", 1, ""},
    {"copy 2 out", "COD-0001-002", "", "MARIA SILVA", "", 0, "Exemplar indisponível"},
    {"all out, by code", "2", "", "MARIA SILVA", "", 0, chooseFirst},
    {"all out, by title", "", "ALI", "MARIA SILVA", "", 0, chooseFirst},
    {"one name, two customers", "1", "", "joão", "", 0, chooseFirst},
    {"start unreadable", "1", "", "MARIA SILVA", "31/02/1996 10:00", 0, "Data ou multa inválida"},
    {"start moved", "1", "", "MARIA SILVA", "10/05/1996 14:00", 0, ""},
};

} // namespace

class RentalTest : public QObject {
    Q_OBJECT

private slots:
    // A new release (the keys test rents a catalogue title and answers N).
    void dueFineAndRewind() {
        RentalShop shop;
        QVERIFY(shop.open());
        shop.typeInto("code", "4");
        shop.typeInto("client", "maria silva");
        shop.click("SALVAR");
        const Rental rental = shop.saved().rentals.last();
        QCOMPARE(rental.due.seconds - rental.start.seconds, 86400.0);
        QCOMPARE(shop.saved().entries.last().description, "Locação: TWISTER / MARIA SILVA");

        // Back two calendar days late at 2,00 a day.
        const Instant back = rental.due.plusSeconds(2 * 86400 + 60);
        shop.app->seams.clock = [back] {
            return back;
        };
        shop.app->table->selectRow(int(shop.app->filteredIDs.indexOf(rental.id)));
        DialogAnswerer details(DialogAnswerer::clickButton(0));
        shop.click("SELECIONAR");
        QVERIFY(details.seen().text.endsWith("Multa atual: R$ 4,00")); // the text box shows a plain space
        DialogAnswerer rewind(DialogAnswerer::pressKey(Qt::Key_S));
        shop.click("FINALIZAR");
        QCOMPARE(rewind.seen().title, "FITA FOI REBOBINADA? [S/N]");

        const Rental returned = shop.saved().rentals.last();
        QVERIFY(returned.fine == 400 && returned.rewound == true &&
                returned.rewindFee == 0);                    // the entries are the rules'
        QVERIFY(!shop.app->filteredIDs.contains(rental.id)); // nothing left to return twice
    }

    void savingResolvesOrRefuses_data() {
        QTest::addColumn<int>("row");
        for (int row = 0; row < int(std::size(saveCases)); ++row)
            QTest::newRow(saveCases[row].name) << row;
    }

    void savingResolvesOrRefuses() {
        QFETCH(int, row);
        const SaveCase& c = saveCases[row];
        RentalShop shop;
        QVERIFY(shop.open());
        shop.typeInto(c.code.isEmpty() ? "search" : "code", c.code + c.title);
        if (c.code.isEmpty())
            QCOMPARE(shop.field("film")->text(), c.title);
        MatchList* films = shop.app->screen.filmMatches;
        QCOMPARE(films->isHidden() ? 0 : films->items().size(), c.listed);
        shop.typeInto("client", c.client);
        if (!c.start.isEmpty()) {
            const QString due = shop.field("due")->text();
            shop.typeInto("start", c.start);
            const std::optional<Instant> typed = parseDateTime(c.start);
            QCOMPARE(shop.field("due")->text(), typed ? dateTimeText(typed->plusSeconds(259200)) : due);
        }
        DialogAnswerer answerer(DialogAnswerer::pressKey(Qt::Key_Return));
        shop.click("SALVAR");
        QCOMPARE(answerer.seen().title, c.refusal);
        const QList<Rental> saved = shop.saved().rentals;
        QCOMPARE(saved.size(), c.refusal.isEmpty() ? 3 : 2);
        if (c.refusal.isEmpty())
            QVERIFY(saved.last().copy == 1 && saved.last().customer == "C1");
    }

    // The question cancelled, or answered after the tape was returned elsewhere: nothing is written.
    void returnAnswers_data() {
        QTest::addColumn<bool>("returnedMeanwhile");
        QTest::newRow("cancelled") << false;
        QTest::newRow("already returned") << true;
    }

    void returnAnswers() {
        QFETCH(bool, returnedMeanwhile);
        RentalShop shop;
        QVERIFY(shop.open());
        shop.app->navigate(Section::returns);
        shop.app->table->selectRow(int(shop.app->filteredIDs.indexOf("OUT-F1")));
        std::unique_ptr<DialogAnswerer> failure;
        Store expected = ::shop(); // what the database holds after the answer
        DialogAnswerer question([&](StyledDialog* dialog) {
            if (returnedMeanwhile) {
                expected.rentals.first().returned = now;
                QVERIFY(shop.app->commit(expected));
                failure = std::make_unique<DialogAnswerer>(DialogAnswerer::pressKey(Qt::Key_Return));
            }
            DialogAnswerer::pressKey(returnedMeanwhile ? Qt::Key_S : Qt::Key_Escape)(dialog);
        });
        shop.click("FINALIZAR");
        QVERIFY(question.answered());
        if (failure)
            QCOMPARE(failure->seen().title + ": " + failure->seen().text,
                     "Devolução não salva: Esta fita já foi devolvida.");
        QVERIFY(shop.saved().rentals == expected.rentals && shop.saved().entries.isEmpty());
    }

    void cashEntries_data() {
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<QString>("refusal");
        QTest::addColumn<qint64>("amount"); // 0: nothing written
        QTest::newRow("money out") << QStringList{"Troco", "saída", "10,00"} << "" << qint64(-1000);
        QTest::newRow("other type") << QStringList{"Doação", "doação", "5,00"} << "Tipo inválido" << qint64(0);
    }

    void cashEntries() {
        QFETCH(QStringList, typed);
        QFETCH(QString, refusal);
        QFETCH(qint64, amount);
        RentalShop shop;
        QVERIFY(shop.open());
        const auto fill = [&typed](StyledDialog* dialog) {
            const QList<DOSField*> fields = dialog->accessory()->findChildren<DOSField*>();
            for (int i = 0; i < fields.size(); ++i)
                fields[i]->setText(typed[i]);
            dialog->buttons().first()->click();
        };
        DialogSequence dialogs({fill, DialogAnswerer::pressKey(Qt::Key_Return)});
        shop.app->cashEntry();
        QCOMPARE(dialogs.titles().value(1), refusal);
        const QList<Entry> entries = shop.saved().entries;
        QCOMPARE(entries.size(), amount != 0 ? 1 : 0);
        if (amount != 0)
            QVERIFY(entries.last().amount == amount && entries.last().description == typed.first());
    }

    void suggestionNamesOnlyFilmsOnTheShelf() {
        RentalShop shop;
        QVERIFY(shop.open());
        QList<qsizetype> offered;
        shop.app->seams.randomIndex = [&offered](qsizetype count) {
            offered.append(count);
            return count - 1;
        };
        DialogAnswerer first(DialogAnswerer::pressKey(Qt::Key_Return));
        shop.app->suggestHouse();
        // Of four films, one was removed and one has no copy on the shelf.
        QCOMPARE(offered, QList<qsizetype>{2});
        QCOMPARE(first.seen().text, QStringLiteral("Hoje eu recomendo: TWISTER\nCOD-0004 • ANO NÃO INFORMADO\nAção\n\n"
                                                   "Pegue a pipoca e boa sessão!"));

        Store everythingOut = shop.app->store;
        for (const char* film : {"F1", "F4"})
            everythingOut.rentals.append(Rental{.id = QStringLiteral("X") + film, .film = film, .due = now, .copy = 1});
        QVERIFY(shop.app->commit(everythingOut));
        DialogAnswerer second(DialogAnswerer::pressKey(Qt::Key_Return));
        shop.app->suggestHouse();
        QCOMPARE(second.seen().text, QStringLiteral("Não há fitas disponíveis no acervo."));
        QCOMPARE(offered.size(), 1);
    }
};

QTEST_MAIN(RentalTest)
#include "test_rental.moc"
