#include "gui/GuiSupport.h"

#include "look/DOSPopup.h"
#include "look/DOSSearchField.h"
#include "look/DOSTable.h"
#include "print/ReportGraph.h"
#include "records/DateText.h"
#include "records/MoneyText.h"

#include <QTemporaryDir>

namespace {

const Instant now{800000000};
constexpr double day = 86400;
using Rows = QList<QStringList>;

// Not in due order: one late rental, two open for the same customer, one of a film gone from the store, one returned.
Store shop() {
    Store store;
    store.reportRentalBaseline = 2;
    store.films = {Film{.id = "F1", .title = "Tubarão", .genre = "Ação, ficcao cientifica", .copies = 2, .code = 1},
                   Film{.id = "F2", .title = "Drama Total", .genre = "Drama", .copies = 1, .code = 2},
                   Film{.id = "F3", .title = "Apagado", .genre = "Cult", .copies = 5, .code = 3, .deleted = true},
                   Film{.id = "F4", .title = "Zorro", .genre = "acao", .copies = 1, .code = 4}};
    for (const auto& [id, name, code] :
         {std::tuple{"C1", "João da Silva", 1}, {"C2", "Maria", 2}, {"C3", "Ana", 3}, {"C4", "Zé", 4}})
        store.customers.append(Customer{.id = id, .name = name, .code = code});
    for (const auto& [id, film, customer, due] : {std::tuple{"R3", "F2", "C2", 2 * day},
                                                  {"R1", "F1", "C1", -day},
                                                  {"R4", "GONE", "C3", 3 * day},
                                                  {"R2", "F2", "C2", day}})
        store.rentals.append(Rental{.id = id, .film = film, .customer = customer, .due = now.plusSeconds(due)});
    store.rentals.append(Rental{.id = "R5", .film = "F3", .customer = "C4", .due = now, .returned = now});
    store.entries = {Entry{.id = "E2", .date = now.plusSeconds(-1000), .description = "Locação", .amount = 550},
                     Entry{.id = "E1", .date = now.plusSeconds(-100), .description = "Fita nova", .amount = -500}};
    return store;
}

// What the table shows, read through its model.
Rows shown(App& app) {
    QAbstractItemModel* model = app.table->model();
    Rows rows(model->rowCount());
    for (int r = 0; r < rows.size(); ++r)
        for (int c = 0; c < model->columnCount(); ++c)
            rows[r].append(model->index(r, c).data().toString());
    return rows;
}

QStringList column(App& app, int c) {
    QStringList cells;
    for (const QStringList& row : shown(app))
        cells.append(row.at(c));
    return cells;
}

Rows report(qint64 total) {
    const QStringList labels{"FITAS CADASTRADAS", "QUANTIDADE NO ACERVO", "CLIENTES CADASTRADOS",
                             "FITAS ALUGADAS",    "FITAS ATRASADAS",      "FILMES JÁ LOCADOS (TOTAL)"};
    const QList<qint64> values{3, 4, 4, 4, 1, total};
    Rows rows;
    for (int i = 0; i < 6; ++i)
        rows.append({labels[i], QString::number(values[i]), reportGraph(values[i], std::max<qint64>(4, total))});
    return rows;
}

void typeIntoSearch(App& app, const QString& text) {
    app.focus(app.search);
    typeText(app.search, text);
}

} // namespace

class ListsTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        app = std::make_unique<TestApp>(dir.path(), now);
        QVERIFY(app->launch());
        (*app)->enterProgram();
        (*app)->store = shop();
    }
    void cleanup() { app.reset(); }

    void rowsOfEachList_data() {
        QTest::addColumn<int>("section");
        QTest::addColumn<qint64>("baseline");
        QTest::addColumn<Rows>("expected");
        const QString late = "ATENÇÃO: CLIENTE EM DÉBITO";
        QTest::newRow("rented") << int(Section::rented) << qint64(2)
                                << Rows{{"COD-0001", "Tubarão", late},
                                        {"COD-0002", "Drama Total", "LOCADO"},
                                        {"COD-0002", "Drama Total", "LOCADO"},
                                        {"—", "—", "LOCADO"}};
        QTest::newRow("customers") << int(Section::customers) << qint64(2)
                                   << Rows{{"0003", "Ana", "1 LOCAÇÃO(ÕES)"},
                                           {"0001", "João da Silva", late},
                                           {"0002", "Maria", "2 LOCAÇÃO(ÕES)"},
                                           {"0004", "Zé", "SEM PENDÊNCIAS"}};
        QTest::newRow("cash") << int(Section::cash) << qint64(2)
                              << Rows{{dateText(now.plusSeconds(-100)), "Fita nova", "SAÍDA", money(-500)},
                                      {dateText(now.plusSeconds(-1000)), "Locação", "ENTRADA", money(550)}};
        for (const auto& [baseline, total] : {std::pair<qint64, qint64>{2, 3}, {9, 0}})
            QTest::addRow("reports, baseline %lld", baseline) << int(Section::reports) << baseline << report(total);
    }
    void rowsOfEachList() {
        QFETCH(int, section);
        QFETCH(qint64, baseline);
        QFETCH(Rows, expected);
        (*app)->store.reportRentalBaseline = baseline;
        (*app)->navigate(section);
        QCOMPARE(shown(*app->app), expected);
    }

    // Typed with keys; taking the text back with Backspace restores every row.
    void searchFollowsKeys_data() {
        QTest::addColumn<int>("section");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("codes");
        QTest::newRow("situation") << int(Section::rented) << "débito" << QStringList{"COD-0001"};
        QTest::newRow("missing film") << int(Section::rented) << "—" << QStringList{"—"};
    }
    void searchFollowsKeys() {
        QFETCH(int, section);
        QFETCH(QString, typed);
        QFETCH(QStringList, codes);
        (*app)->navigate(section);
        const int all = (*app)->table->model()->rowCount();
        typeIntoSearch(*app->app, typed);
        QCOMPARE(column(*app->app, 0), codes);
        for (qsizetype i = 0; i < typed.size(); ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
        QCOMPARE((*app)->table->model()->rowCount(), all);
    }

    void genrePopupAndFilter() {
        (*app)->store.films[3].genre = "Ação, Cult"; // its own genre joins the pop-up after the standard ones
        (*app)->navigate(Section::films);
        DOSPopup* popup = (*app)->screen.genrePopup;
        QStringList titles;
        for (int i = 0; i < popup->count(); ++i)
            titles.append(popup->itemText(i));
        QCOMPARE(titles.last(), "CULT");
        popup->setCurrentIndex(titles.indexOf("CULT"));
        QCOMPARE(column(*app->app, 1), QStringList{"Zorro"});

        // The genre is remembered across screens, and dropped once no film has it.
        (*app)->navigate(Section::customers);
        (*app)->store.films[3].genre = "acao";
        (*app)->navigate(Section::films);
        QVERIFY(!(*app)->selectedGenre.has_value());
        QCOMPARE(column(*app->app, 1), (QStringList{"Drama Total", "Tubarão", "Zorro"}));
    }

    // Films flip to code order; the customers keep their own.
    void orderToggle() {
        (*app)->navigate(Section::films);
        (*app)->screen.sortButton->click();
        QCOMPARE((*app)->screen.sortButton->text(), "ORDEM: CÓDIGO");
        QCOMPARE(column(*app->app, 0), (QStringList{"COD-0001", "COD-0002", "COD-0004"}));
        (*app)->navigate(Section::customers);
        QCOMPARE(column(*app->app, 0), (QStringList{"0003", "0001", "0002", "0004"}));
        (*app)->screen.sortButton->click();
        QCOMPARE(column(*app->app, 0), (QStringList{"0001", "0002", "0003", "0004"}));
    }

    // The cached rows must follow the clock past a due time and every change of the store.
    void rowsFollowClockAndStore() {
        const auto setClock = [this](Instant time) {
            (*app)->clock = [time] {
                return time;
            };
        };
        (*app)->navigate(Section::rented);
        setClock(now.plusSeconds(day + 1));
        QCOMPARE(column(*app->app, 2).count("LOCADO"), 2);
        setClock(now);
        QCOMPARE(column(*app->app, 2).count("LOCADO"), 3);
        (*app)->store.rentals[1].returned = now;
        QCOMPARE(column(*app->app, 1).first(), "Drama Total");
        setClock(now.plusSeconds(day + 1));
        (*app)->onlyLate = true;
        (*app)->reloadTable();
        QCOMPARE((*app)->table->model()->rowCount(), 1);

        // Fines grow at local midnight, with no due time passing.
        (*app)->store.rentals[3].finePerDay = 300;
        (*app)->navigate(Section::returns);
        QCOMPARE(column(*app->app, 4).first(), money(0));
        setClock(calendar::startOfDay(calendar::localDate(now.plusSeconds(day)).addDays(1)).plusSeconds(1));
        QCOMPARE(column(*app->app, 4).first(), money(300));
    }

    // The selected row names the record of the filtered list; no row asks for one.
    void selectedRecord() {
        (*app)->navigate(Section::customers);
        typeIntoSearch(*app->app, "mar");
        (*app)->table->selectRow(0);
        QCOMPARE((*app)->selected(), std::make_optional<QString>("C2"));
        (*app)->table->clearSelection();
        DialogAnswerer answerer(DialogAnswerer::pressKey(Qt::Key_Return));
        QCOMPARE((*app)->selected(), std::nullopt);
        QCOMPARE(answerer.seen().title, "Selecione um registro");
        QCOMPARE(answerer.seen().text, "Use as setas ou clique na linha desejada.");
    }

private:
    QTemporaryDir dir;
    std::unique_ptr<TestApp> app;
};

QTEST_MAIN(ListsTest)
#include "test_lists.moc"
