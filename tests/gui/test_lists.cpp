#include "gui/GuiSupport.h"

#include "look/DOSPopup.h"
#include "look/DOSSearchField.h"
#include "look/DOSTable.h"
#include "records/DateText.h"
#include "records/MoneyText.h"

#include "support/ListShop.h"

namespace {

const Instant now{800000000};
using Rows = QList<QStringList>;

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
        QVERIFY((*app)->commit(listShop(now)));
    }
    void cleanup() { app.reset(); }

    // The table shows the list's rows; which rows is the list rules' own test.
    void rowsOfEachList_data() {
        QTest::addColumn<int>("section");
        QTest::addColumn<Rows>("expected");
        const QString late = "ATENÇÃO: CLIENTE EM DÉBITO";
        QTest::newRow("rented") << int(Section::rented)
                                << Rows{{"COD-0001", "Tubarão", late},
                                        {"COD-0002", "Drama Total", "LOCADO"},
                                        {"COD-0002", "Drama Total", "LOCADO"},
                                        {"—", "—", "LOCADO"}};
        QTest::newRow("cash") << int(Section::cash)
                              << Rows{{dateText(now.plusSeconds(-100)), "Fita nova", "SAÍDA", money(-500)},
                                      {dateText(now.plusSeconds(-1000)), "Locação", "ENTRADA", money(550)}};
    }
    void rowsOfEachList() {
        QFETCH(int, section);
        QFETCH(Rows, expected);
        (*app)->navigate(section);
        QCOMPARE(shown(*app->app), expected);
    }

    // Each column its width, the last one to the table's right edge: no text cut while the table has room.
    void lastColumnReachesTheEdge() {
        (*app)->navigate(Section::rented);
        QApplication::processEvents();
        DOSTable* table = (*app)->table;
        QCOMPARE(table->columnViewportPosition(2) + table->columnWidth(2), table->viewport()->width());
        QVERIFY(table->columnWidth(2) > table->fontMetrics().horizontalAdvance("ATENÇÃO: CLIENTE EM DÉBITO"));
    }

    // Typed with keys; taking the text back with Backspace restores every row.
    void searchFollowsKeys_data() {
        QTest::addColumn<int>("section");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("codes");
        QTest::newRow("situation") << int(Section::rented) << "débito" << QStringList{"COD-0001"};
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
        Store store = listShop(now);
        store.films[3].genre = "Ação, Cult"; // its own genre joins the pop-up after the standard ones
        QVERIFY((*app)->commit(store));
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
        QVERIFY((*app)->commit(listShop(now)));
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
