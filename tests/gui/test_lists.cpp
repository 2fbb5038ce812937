#include "gui/GuiSupport.h"

#include "look/DOSPopup.h"
#include "look/DOSSearchField.h"
#include "look/DOSTable.h"

#include "support/ListShop.h"

namespace {

const Instant now{800000000};

// One column of what the table shows, read through its model.
QStringList column(App& app, int c) {
    QAbstractItemModel* model = app.table->model();
    QStringList cells;
    for (int r = 0; r < model->rowCount(); ++r)
        cells.append(model->index(r, c).data().toString());
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

    // Each column its width, the last one to the table's right edge: no text cut while the table has room.
    void lastColumnReachesTheEdge() {
        (*app)->navigate(Section::rented);
        QApplication::processEvents();
        DOSTable* table = (*app)->table;
        QCOMPARE(table->columnViewportPosition(2) + table->columnWidth(2), table->viewport()->width());
        QVERIFY(table->columnWidth(2) > table->fontMetrics().horizontalAdvance("ATENÇÃO: CLIENTE EM DÉBITO"));
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
