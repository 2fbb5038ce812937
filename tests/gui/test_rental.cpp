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

const Instant now{800000000}; // 1996-05-08, a Wednesday

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
    void rentByKeyboard_data();
    void rentByKeyboard();
    void savingResolvesOrRefuses_data();
    void savingResolvesOrRefuses();
    void cashEntries_data();
    void cashEntries();
    void shopNameLimit_data();
    void shopNameLimit();
    void suggestionNamesOnlyFilmsOnTheShelf();
};

void RentalTest::rentByKeyboard_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("film");
    QTest::addColumn<double>("period");
    QTest::newRow("catalogue title") << "tuba"
                                     << "F1" << 259200.0;
    QTest::newRow("new release") << "twis"
                                 << "F4" << 86400.0;
}

void RentalTest::rentByKeyboard() {
    QFETCH(QString, typed);
    QFETCH(QString, film);
    QFETCH(double, period);
    RentalShop shop;
    QVERIFY(shop.open());

    shop.type("film", typed);
    QCOMPARE(shop.app->screen.filmMatches->items().size(), 1);
    if (film == "F1")
        QCOMPARE(shop.app->screen.filmMatches->items().first().label, "0001 — TUBARÃO — " + money(500));
    QVERIFY(!shop.app->rentalFilm); // a title fragment only lists
    shop.press(Qt::Key_Down);
    shop.press(Qt::Key_Return);
    QCOMPARE(shop.app->rentalFilm, film);
    QCOMPARE(QApplication::focusWidget(), shop.field("client"));
    const Instant start = *parseDateTime(shop.field("start")->text());
    QCOMPARE(shop.field("due")->text(), dateTimeText(start.plusSeconds(period)));

    QTest::keyClicks(QApplication::focusWidget(), "silva");
    QCOMPARE(shop.app->screen.clientMatches->items().first().label, "0001 — MARIA SILVA — (11) 5555-0101");
    shop.press(Qt::Key_Down);
    shop.press(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), shop.field("start"));
    shop.click("SALVAR");

    QCOMPARE(shop.app->section, int(Section::rented));
    const Store saved = shop.saved();
    const Rental& rental = saved.rentals.last();
    QCOMPARE(rental.film, film);
    QCOMPARE(rental.customer, "C1");
    QCOMPARE(rental.copy, 1);
    QCOMPARE(rental.finePerDay, 200);
    QCOMPARE(rental.due.seconds - rental.start.seconds, period);
    QCOMPARE(saved.entries.last().amount, rental.price);
    QVERIFY(saved.entries.last().description.startsWith("Locação: ") &&
            saved.entries.last().description.endsWith(" / MARIA SILVA"));
    // The choice was used up: the screen starts empty again.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F3);
    QCOMPARE(shop.field("film")->text(), QString());
}

void RentalTest::savingResolvesOrRefuses_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("client");
    QTest::addColumn<QString>("start");
    QTest::addColumn<int>("listed");
    QTest::addColumn<QString>("refusal");
    QTest::addColumn<int>("copy");
    const QString chooseFirst = "Selecione filme e cliente";
    QTest::newRow("free copy by code, name typed in full") << "1"
                                                           << ""
                                                           << "maria silva"
                                                           << "" << 0 << "" << 1;
    QTest::newRow("copy 1 asked for") << "COD-0001-001"
                                      << ""
                                      << "MARIA SILVA"
                                      << "" << 0 << "" << 1;
    QTest::newRow("copy 2 is out") << "COD-0001-002"
                                   << ""
                                   << "MARIA SILVA"
                                   << "" << 0 << "Exemplar indisponível" << 0;
    QTest::newRow("copy 9 does not exist") << "COD-0001-009"
                                           << ""
                                           << "MARIA SILVA"
                                           << "" << 0 << "Exemplar indisponível" << 0;
    QTest::newRow("every copy out, by code") << "2"
                                             << ""
                                             << "MARIA SILVA"
                                             << "" << 0 << chooseFirst << 0;
    QTest::newRow("every copy out, by title") << ""
                                              << "ALI"
                                              << "MARIA SILVA"
                                              << "" << 0 << chooseFirst << 0;
    QTest::newRow("removed film") << ""
                                  << "GREM"
                                  << "MARIA SILVA"
                                  << "" << 0 << chooseFirst << 0;
    QTest::newRow("two customers of one name") << "1"
                                               << ""
                                               << "joão"
                                               << "" << 0 << chooseFirst << 0;
    QTest::newRow("unique title typed, not chosen") << ""
                                                    << "TUB"
                                                    << "MARIA SILVA"
                                                    << "" << 1 << "" << 1;
    QTest::newRow("unreadable start") << "1"
                                      << ""
                                      << "MARIA SILVA"
                                      << "31/02/1996 10:00" << 0 << "Data ou multa inválida" << 0;
    QTest::newRow("start moved") << "1"
                                 << ""
                                 << "MARIA SILVA"
                                 << "10/05/1996 14:00" << 0 << "" << 1;
}

void RentalTest::savingResolvesOrRefuses() {
    QFETCH(QString, code);
    QFETCH(QString, title);
    QFETCH(QString, client);
    QFETCH(QString, start);
    QFETCH(int, listed);
    QFETCH(QString, refusal);
    QFETCH(int, copy);
    RentalShop shop;
    QVERIFY(shop.open());
    if (!code.isEmpty())
        shop.type("code", code);
    if (!title.isEmpty())
        shop.type("film", title);
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
    const Store saved = shop.saved();
    QCOMPARE(saved.rentals.size(), shop.app->store.rentals.size());
    if (refusal.isEmpty()) {
        QCOMPARE(saved.rentals.size(), 3);
        QCOMPARE(saved.rentals.last().copy, copy);
        QCOMPARE(saved.rentals.last().customer, "C1");
    } else {
        QCOMPARE(saved.rentals.size(), 2);
        QCOMPARE(shop.field("client")->text(), client); // the form keeps what was typed
    }
}

void RentalTest::cashEntries_data() {
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QString>("refusal");
    QTest::addColumn<qint64>("amount"); // 0: nothing written
    QTest::newRow("money out") << QStringList{"Troco", "saída", "10,00"} << "" << qint64(-1000);
    QTest::newRow("money in") << QStringList{"Venda", "Entrada", "5,50"} << "" << qint64(550);
    QTest::newRow("unaccented type") << QStringList{"Troco", "SAIDA", "1"} << "" << qint64(-100);
    QTest::newRow("zero") << QStringList{"Venda", "ENTRADA", "0"} << "" << qint64(0);
    QTest::newRow("negative") << QStringList{"Venda", "ENTRADA", "-5,00"} << "" << qint64(0);
    QTest::newRow("unreadable") << QStringList{"Venda", "ENTRADA", "cinco"} << "" << qint64(0);
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
    if (amount != 0) {
        QCOMPARE(entries.last().amount, amount);
        QCOMPARE(entries.last().description, typed.first());
        QCOMPARE(entries.last().date, now);
    }
}

void RentalTest::shopNameLimit_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("name");
    const QString sixty = QString(59, u'A') + QStringLiteral("É");
    QTest::newRow("sixty characters") << sixty << sixty;
    QTest::newRow("sixty with a separate accent") << QString(59, u'A') + "E\u0301" << QString(59, u'A') + "E\u0301";
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
        everythingOut.rentals.append(Rental{
            .id = QStringLiteral("X") + film, .film = film, .customer = "C1", .start = now, .due = now, .copy = 1});
    QVERIFY(shop.app->commit(everythingOut));
    DialogAnswerer second(DialogAnswerer::pressKey(Qt::Key_Return));
    shop.app->suggestHouse();
    QCOMPARE(second.seen().text, QStringLiteral("Não há fitas disponíveis no acervo."));
    QCOMPARE(offered.size(), 1);
}

QTEST_MAIN(RentalTest)
#include "test_rental.moc"
