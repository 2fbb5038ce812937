#include "gui/GuiSupport.h"

#include "app/MatchList.h"
#include "app/RecordForm.h"
#include "look/DOSField.h"
#include "look/DOSTable.h"
#include "records/DateText.h"
#include "records/MoneyText.h"
#include "storage/LocalDatabase.h"

#include <QTableView>
#include <QTemporaryDir>

namespace {

const Instant now{800000000}; // 09/05/2026 03:13 in São Paulo

// TUBARÃO has copy 2 out, ALIEN its only copy, GREMLINS was removed; two customers share a name.
Store shop() {
    Store store;
    store.films = {
        Film{.id = "F1", .title = "TUBARÃO", .genre = "Suspense", .copies = 2, .price = 500, .code = 1},
        Film{.id = "F2", .title = "ALIEN", .genre = "Terror", .copies = 1, .price = 400, .code = 2},
        Film{
            .id = "F3", .title = "GREMLINS", .genre = "Comédia", .copies = 3, .price = 300, .code = 3, .deleted = true},
        Film{.id = "F4", .title = "TWISTER", .genre = "Ação", .copies = 1, .price = 700, .code = 4, .release = true},
    };
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

struct RentalShop {
    QTemporaryDir dir;
    TestApp app{dir.path(), now};

    bool open(const Store& store = shop()) {
        LocalDatabase(dir.filePath("cinefita.sqlite")).save(store);
        if (!app.launch())
            return false;
        app->enterProgram();
        QTest::keyClick(app->window->focusWidget(), Qt::Key_F3);
        QCoreApplication::processEvents(); // the layout shows the new screen's views
        return app->screen.formView != nullptr;
    }
    DOSField* field(const QString& key) const { return app->screen.formView->fields().value(key); }
    // Types as the operator does: into the focused field, replacing what it holds.
    void type(const QString& key, const QString& text) const {
        app->focus(field(key));
        field(key)->selectAll();
        for (QChar letter : text) // keyClicks takes Latin-1 only
            QTest::sendKeyEvent(QTest::Click, field(key), Qt::Key_unknown, QString(letter), Qt::NoModifier);
    }
    void press(Qt::Key key) const { QTest::keyClick(QApplication::focusWidget(), key); }
    void click(const QString& action) const {
        for (DOSButton* button : app->screen.actionButtons)
            if (button->text() == action)
                return button->click();
        QFAIL(qPrintable("no action " + action));
    }
    Store saved() const { return *LocalDatabase(dir.filePath("cinefita.sqlite")).load(); }
};

} // namespace

class RentalTest : public QObject {
    Q_OBJECT

private slots:
    void rentAndReturnByKeyboard_data();
    void rentAndReturnByKeyboard();
    void savingResolvesOrRefuses_data();
    void savingResolvesOrRefuses();
    void cashEntries_data();
    void cashEntries();
    void shopNameLimit_data();
    void shopNameLimit();
    void suggestionNamesOnlyFilmsOnTheShelf();
};

void RentalTest::rentAndReturnByKeyboard_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("title");
    QTest::addColumn<double>("period");
    QTest::newRow("catalogue title") << "tuba"
                                     << "TUBARÃO" << 259200.0;
    QTest::newRow("new release") << "twis"
                                 << "TWISTER" << 86400.0;
}

void RentalTest::rentAndReturnByKeyboard() {
    QFETCH(QString, typed);
    QFETCH(QString, title);
    QFETCH(double, period);
    RentalShop shop;
    QVERIFY(shop.open());
    shop.type("film", typed);
    QVERIFY(!shop.app->rentalFilm); // a title fragment only lists
    shop.press(Qt::Key_Down);
    shop.press(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), shop.field("client"));
    QTest::keyClicks(QApplication::focusWidget(), "silva");
    shop.press(Qt::Key_Down);
    shop.press(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), shop.field("start"));
    shop.click("SALVAR");

    QCOMPARE(shop.app->section, int(Section::rented));
    const Rental rental = shop.saved().rentals.last();
    QVERIFY(shop.app->filteredIDs.contains(rental.id));
    QCOMPARE(rental.customer, "C1");
    QCOMPARE(rental.copy, 1);
    QCOMPARE(rental.due.seconds - rental.start.seconds, period);
    QCOMPARE(shop.saved().entries.last().description, "Locação: " + title + " / MARIA SILVA");

    // Back two calendar days late at 2,00 a day, not rewound.
    const Instant back = rental.due.plusSeconds(2 * 86400 + 60);
    shop.app->clock = [back] {
        return back;
    };
    shop.app->table->selectRow(int(shop.app->filteredIDs.indexOf(rental.id)));
    DialogAnswerer details(DialogAnswerer::clickButton(0));
    shop.click("SELECIONAR");
    QVERIFY(details.seen().text.endsWith("Multa atual: R$ 4,00")); // the text box shows a plain space
    QCOMPARE(shop.app->section, int(Section::returns));
    QCOMPARE(shop.app->window->focusWidget(), static_cast<QWidget*>(shop.app->table.data()));
    QCOMPARE(shop.app->selected(), rental.id);
    DialogAnswerer rewind(DialogAnswerer::pressKey(Qt::Key_N));
    shop.click("FINALIZAR");
    QCOMPARE(rewind.seen().title, "FITA FOI REBOBINADA? [S/N]");

    const Store saved = shop.saved();
    QCOMPARE(saved.rentals.last().fine, 400);
    QCOMPARE(saved.rentals.last().rewindFee, 100);
    QCOMPARE(saved.entries.size(), 3);
    QCOMPARE(saved.entries[1].description, "Multa: " + title);
    QCOMPARE(saved.entries[2].description, "Taxa de rebobinagem: " + title);
    QVERIFY(!shop.app->filteredIDs.contains(rental.id)); // nothing left to return twice
}

void RentalTest::savingResolvesOrRefuses_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("client");
    QTest::addColumn<QString>("start");
    QTest::addColumn<int>("listed");
    QTest::addColumn<QString>("refusal");
    const QString chooseFirst = "Selecione filme e cliente";
    QTest::newRow("code, name typed in full") << "1"
                                              << ""
                                              << "maria silva"
                                              << "" << 0 << "";
    QTest::newRow("title typed, never chosen") << ""
                                               << "TUB"
                                               << "MARIA SILVA"
                                               << "" << 1 << "";
    QTest::newRow("copy 2 out") << "COD-0001-002"
                                << ""
                                << "MARIA SILVA"
                                << "" << 0 << "Exemplar indisponível";
    QTest::newRow("all out, by code") << "2"
                                      << ""
                                      << "MARIA SILVA"
                                      << "" << 0 << chooseFirst;
    QTest::newRow("all out, by title") << ""
                                       << "ALI"
                                       << "MARIA SILVA"
                                       << "" << 0 << chooseFirst;
    QTest::newRow("one name, two customers") << "1"
                                             << ""
                                             << "joão"
                                             << "" << 0 << chooseFirst;
    QTest::newRow("start unreadable") << "1"
                                      << ""
                                      << "MARIA SILVA"
                                      << "31/02/1996 10:00" << 0 << "Data ou multa inválida";
    QTest::newRow("start moved") << "1"
                                 << ""
                                 << "MARIA SILVA"
                                 << "10/05/1996 14:00" << 0 << "";
}

void RentalTest::savingResolvesOrRefuses() {
    QFETCH(QString, code);
    QFETCH(QString, title);
    QFETCH(QString, client);
    QFETCH(QString, start);
    QFETCH(int, listed);
    QFETCH(QString, refusal);
    RentalShop shop;
    QVERIFY(shop.open());
    shop.type(code.isEmpty() ? "film" : "code", code + title);
    MatchList* films = shop.app->screen.filmMatches;
    QCOMPARE(films->isHidden() ? 0 : films->items().size(), listed);
    shop.type("client", client);
    if (!start.isEmpty()) {
        const QString due = shop.field("due")->text();
        shop.type("start", start);
        const std::optional<Instant> typed = parseDateTime(start);
        QCOMPARE(shop.field("due")->text(), typed ? dateTimeText(typed->plusSeconds(259200)) : due);
    }
    DialogAnswerer answerer(DialogAnswerer::pressKey(Qt::Key_Return));
    shop.click("SALVAR");
    QCOMPARE(answerer.seen().title, refusal);
    const QList<Rental> saved = shop.saved().rentals;
    QCOMPARE(saved.size(), refusal.isEmpty() ? 3 : 2);
    if (refusal.isEmpty())
        QVERIFY(saved.last().copy == 1 && saved.last().customer == "C1");
}

void RentalTest::cashEntries_data() {
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QString>("refusal");
    QTest::addColumn<qint64>("amount"); // 0: nothing written
    QTest::newRow("money out") << QStringList{"Troco", "saída", "10,00"} << "" << qint64(-1000);
    QTest::newRow("money in") << QStringList{"Venda", "Entrada", "5,50"} << "" << qint64(550);
    QTest::newRow("zero") << QStringList{"Venda", "ENTRADA", "0"} << "" << qint64(0);
    QTest::newRow("no description") << QStringList{"", "ENTRADA", "5,00"} << "" << qint64(0);
    QTest::newRow("other type") << QStringList{"Doação", "doação", "5,00"} << "Tipo inválido" << qint64(0);
}

void RentalTest::cashEntries() {
    QFETCH(QStringList, typed);
    QFETCH(QString, refusal);
    QFETCH(qint64, amount);
    RentalShop shop;
    QVERIFY(shop.open());
    std::unique_ptr<DialogAnswerer> followUp;
    DialogAnswerer answerer([&](StyledDialog* dialog) {
        const QList<DOSField*> fields = dialog->accessory()->findChildren<DOSField*>();
        for (int i = 0; i < fields.size(); ++i)
            fields[i]->setText(typed[i]);
        followUp = std::make_unique<DialogAnswerer>(DialogAnswerer::pressKey(Qt::Key_Return));
        dialog->buttons().first()->click();
    });
    shop.app->cashEntry();
    QVERIFY(answerer.answered() && followUp != nullptr);
    QCOMPARE(followUp->seen().title, refusal);
    const QList<Entry> entries = shop.saved().entries;
    QCOMPARE(entries.size(), amount != 0 ? 1 : 0);
    if (amount != 0)
        QVERIFY(entries.last().amount == amount && entries.last().description == typed.first());
}

void RentalTest::shopNameLimit_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("name");
    const QString sixty = QString(59, u'A') + "E\u0301"; // an accent typed apart is still one character
    QTest::newRow("sixty characters") << sixty << sixty;
    QTest::newRow("sixty-one characters") << sixty + "B"
                                          << "LOCADORA";
    QTest::newRow("empty") << ""
                           << "LOCADORA";
}

void RentalTest::shopNameLimit() {
    QFETCH(QString, typed);
    QFETCH(QString, name);
    RentalShop shop;
    QVERIFY(shop.open());
    DialogAnswerer answerer([&typed](StyledDialog* dialog) {
        dialog->accessory()->findChild<DOSField*>()->setText(typed);
        dialog->buttons().first()->click();
    });
    shop.app->configureName();
    QCOMPARE(shop.saved().locadoraName.value_or("LOCADORA"), name);
    QCOMPARE(shop.app->window->windowTitle(), "CINEFITA — " + name);
}

void RentalTest::suggestionNamesOnlyFilmsOnTheShelf() {
    RentalShop shop;
    QVERIFY(shop.open());
    QList<qsizetype> offered;
    shop.app->randomIndex = [&offered](qsizetype count) {
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

QTEST_MAIN(RentalTest)
#include "test_rental.moc"
