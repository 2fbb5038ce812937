#include "gui/GuiSupport.h"

#include "look/DOSTable.h"

namespace {

// Launches on the store and leaves the splash with Return, as the operator does.
bool opened(ShopOnDisk& keys, const Store& store = {}) {
    if (!keys.launch(store))
        return false;
    keys.press(Qt::Key_Return);
    return !keys.app->showingSplash;
}

Store twoFilmsTwoCustomers() {
    Store store;
    store.films = {Film{.id = "F1", .title = "TUBARÃO", .genre = "Suspense", .copies = 1, .price = 500, .code = 1},
                   Film{.id = "F2", .title = "TWISTER", .genre = "Ação", .copies = 1, .price = 500, .code = 2}};
    store.customers = {Customer{.id = "C1", .name = "MARIA", .phone = "(11) 5555-0101", .code = 1},
                       Customer{.id = "C2", .name = "MARCOS", .phone = "(11) 5555-0102", .code = 2}};
    return store;
}

} // namespace

class KeysTest : public QObject {
    Q_OBJECT

private slots:
    void ringWrapsBothWays_data() {
        QTest::addColumn<bool>("fromLast");
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("toLast");
        QTest::newRow("tab, nothing focused") << false << int(Qt::Key_Tab) << false;
        QTest::newRow("tab from the last") << true << int(Qt::Key_Tab) << false;
        QTest::newRow("shift-tab from the heading") << false << int(Qt::Key_Backtab) << true;
    }

    void ringWrapsBothWays() {
        QFETCH(bool, fromLast);
        QFETCH(int, key);
        QFETCH(bool, toLast);
        ShopOnDisk keys;
        QVERIFY(opened(keys));
        const QList<QWidget*> ring = keys.app->mainControls();
        if (fromLast)
            QVERIFY(keys.tabTo(ring.last()));
        else if (!toLast)
            keys.focused()->clearFocus();
        keys.press(Qt::Key(key), key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        QCOMPARE(keys.focused(), toLast ? ring.last() : static_cast<QWidget*>(keys.app->menuHeading));
    }

    // Left and Right mean nothing on a button: the focus stays where the operator sees it.
    void arrowsOnButtonsStay_data() {
        QTest::addColumn<QString>("where");
        QTest::addColumn<int>("key");
        QTest::newRow("menu entry, Left") << "menu" << int(Qt::Key_Left);
        QTest::newRow("heading, Right") << "heading" << int(Qt::Key_Right);
        QTest::newRow("footer, Left") << "footer" << int(Qt::Key_Left);
        QTest::newRow("footer, Right") << "footer" << int(Qt::Key_Right);
    }
    void arrowsOnButtonsStay() {
        QFETCH(QString, where);
        QFETCH(int, key);
        ShopOnDisk keys;
        QVERIFY(opened(keys));
        if (where == "menu")
            keys.press(Qt::Key_Up); // the last entry
        else if (where == "footer")
            QVERIFY(keys.tabTo(keys.app->footerButtons.first()));
        QWidget* before = keys.focused();
        keys.press(Qt::Key(key));
        QCOMPARE(keys.focused(), before);
        QCOMPARE(keys.app->section, int(Section::home));
    }

    // Right from the menu lands on the form's first control, shown only or editable; Tab goes on from there.
    void rightEntersTheForm_data() {
        QTest::addColumn<bool>("selected");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("next");
        QTest::newRow("customer opened with SELECIONAR") << true << "code"
                                                         << "";
        QTest::newRow("new film") << false << "code"
                                  << "name";
    }
    void rightEntersTheForm() {
        QFETCH(bool, selected);
        QFETCH(QString, first);
        QFETCH(QString, next);
        ShopOnDisk keys;
        QVERIFY(opened(keys, twoFilmsTwoCustomers()));
        if (selected) {
            keys.press(Qt::Key_F2);
            QVERIFY(keys.tabTo(keys.app->table));
            keys.press(Qt::Key_Return);
        } else {
            keys.press(Qt::Key_F1);
        }
        QVERIFY(keys.app->screen.formView != nullptr);
        QVERIFY(keys.tabTo(keys.app->navButtons.first()));
        keys.press(Qt::Key_Right);
        QCOMPARE(keys.focused(), keys.field(first));
        const QList<QWidget*> ring = keys.app->mainControls();
        keys.press(Qt::Key_Tab);
        if (next.isEmpty()) // every field only shown: on to the ring's next control after the form
            QVERIFY(ring.contains(keys.focused()) && keys.focused() != keys.app->menuHeading);
        else
            QCOMPARE(keys.focused(), keys.field(next));
    }

    void nothingActsBehindDialog() {
        ShopOnDisk keys;
        QVERIFY(opened(keys, twoFilmsTwoCustomers()));
        DialogAnswerer suggestion([&keys](StyledDialog* dialog) {
            QTest::keyClick(keys.focused(), Qt::Key_F2);
            QTest::keyClick(keys.focused(), Qt::Key_Escape);
            DialogAnswerer::pressKey(Qt::Key_Return)(dialog);
        });
        keys.press(Qt::Key_F7);
        QVERIFY(suggestion.answered());
        QCOMPARE(keys.app->section, int(Section::home));
        QCOMPARE(keys.app.terminations, 0);
    }

    void operatorsDayByKeysOnly() {
        ShopOnDisk keys;
        QVERIFY(opened(keys, twoFilmsTwoCustomers()));
        keys.press(Qt::Key_F1);
        keys.type("FLASH"); // shortcut letters, typed into the field
        QVERIFY(keys.tabTo(keys.field("genre")));
        keys.type("Terror");
        keys.press(Qt::Key_Return);

        keys.press(Qt::Key_F2);
        QVERIFY(keys.tabTo(keys.app->screen.createButton));
        keys.press(Qt::Key_Space);
        keys.type("ANA");
        QVERIFY(keys.tabTo(keys.field("phone")));
        keys.type("11987654321");
        keys.press(Qt::Key_Return);

        keys.press(Qt::Key_F3);
        keys.press(Qt::Key_Right);
        QVERIFY(keys.tabTo(keys.field("film")));
        keys.type("t");
        for (Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up}) // into the list, last, first
            keys.press(key);
        keys.press(Qt::Key_Return);
        QCOMPARE(keys.focused(), keys.field("client"));
        keys.type("marc");
        keys.press(Qt::Key_Down);
        keys.press(Qt::Key_Return);
        QCOMPARE(keys.focused(), keys.field("start"));
        keys.press(Qt::Key_Tab); // DEVOLUÇÃO is shown, never edited
        QCOMPARE(keys.focused(), keys.field("fine"));
        QVERIFY(keys.tabTo(keys.app->screen.actionButtons.last())); // SALVAR
        keys.press(Qt::Key_Space);

        keys.press(Qt::Key_F5);
        QVERIFY(keys.tabTo(keys.app->table));
        DialogAnswerer details(DialogAnswerer::pressKey(Qt::Key_Return));
        keys.press(Qt::Key_Return); // SELECIONAR, then on to the returns list
        QVERIFY(details.answered());
        QCOMPARE(keys.app->section, int(Section::returns));
        DialogAnswerer rewind(DialogAnswerer::pressKey(Qt::Key_N));
        keys.press(Qt::Key_Return); // FINALIZAR
        QVERIFY(rewind.answered());

        for (const Store& store : {keys.app->store, keys.saved()}) {
            QVERIFY(store.films.size() == 3 && store.films.last().title == "FLASH");
            QVERIFY(store.customers.size() == 3 && store.customers.last().phone == "(11) 987654321");
            QCOMPARE(store.rentals.size(), 1);
            const Rental& rental = store.rentals[0];
            QVERIFY(rental.film == "F1" && rental.customer == "C2");
            QVERIFY(rental.fine == 0 && rental.rewound == false && rental.rewindFee == 100);
            QCOMPARE(store.entries.size(), 2);
            QCOMPARE(store.entries[0].amount + store.entries[1].amount, rental.price + 100);
        }
    }
};

QTEST_MAIN(KeysTest)
#include "test_keys.moc"
