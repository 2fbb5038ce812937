#include "gui/GuiSupport.h"
#include "support/Builders.h"

#include "exchange/CashDayExport.h"
#include "look/DOSTable.h"
#include "print/CashClosingPage.h"
#include "records/CashDay.h"
#include "records/DateText.h"
#include "support/Files.h"

#include <QFileInfo>
#include <QLabel>

namespace {

const Instant now{800000000}; // 09/05/2026 03:13 in São Paulo

// Two tapes late with two customers; the book holds the evening of the 8th and the first second of the 9th.
Store shop() {
    Store store;
    store.films = counterFilms(2);
    store.customers = {
        Customer{.id = "C1", .name = "MARIA SILVA", .phone = "(11) 5555-0101", .code = 1},
        Customer{.id = "C2", .name = "JOÃO", .phone = "(11) 5555-0102", .code = 2},
    };
    for (const auto& [id, film, customer] : {std::tuple{"LATE-1", "F1", "C1"}, std::tuple{"LATE-2", "F2", "C2"}})
        store.rentals.append(Rental{.id = id,
                                    .film = film,
                                    .customer = customer,
                                    .start = now.plusSeconds(-5 * 86400),
                                    .due = now.plusSeconds(-2 * 86400),
                                    .price = 500,
                                    .finePerDay = 100,
                                    .copy = 1});
    const Instant ninth = calendar::startOfDay(QDate(2026, 5, 9));
    store.entries = {
        Entry{"E1", ninth.plusSeconds(-14 * 3600), "Troco", -1000},
        Entry{"E2", ninth.plusSeconds(-1), "Locação: TUBARÃO / MARIA SILVA", 500},
        Entry{"E3", ninth, "Multa: ALIEN", 300},
    };
    return store;
}

struct DocumentsShop : ShopOnDisk {
    DocumentsShop() : ShopOnDisk(now) {
        app->seams.openPrintPage = [this](const QString& path) {
            opened.append(path);
        };
        app->seams.chooseSaveFile = [this](const QString&, const QString& proposed, const QString&) {
            proposedNames.append(proposed);
            return dir.filePath(proposed);
        };
    }
    bool open() {
        if (!launch(shop()))
            return false;
        app->enterProgram();
        return true;
    }
    // The last page opened, as written; empty when none was.
    QByteArray lastPage() const { return opened.isEmpty() ? QByteArray() : fileBytes(opened.last()); }
    // From the rented list to the rewind question, by keys: Return on the row, DEVOLUÇÃO, Return, N.
    void returnByKeys(const QString& id) const {
        press(Qt::Key_F5);
        app->focus(app->table);
        app->table->selectRow(int(app->filteredIDs.indexOf(id)));
        DialogAnswerer details(DialogAnswerer::pressKey(Qt::Key_Return));
        press(Qt::Key_Return);
        DialogAnswerer rewind(DialogAnswerer::pressKey(Qt::Key_N));
        press(Qt::Key_Return);
        QVERIFY(details.answered() && rewind.answered());
    }
    // The late list's AVISOS, reached by Tab from its table.
    void pressNotices() const {
        press(Qt::Key_A);
        app->focus(app->table);
        QVERIFY(tabTo(button("AVISOS")));
        press(Qt::Key_Return);
    }
    QStringList opened;
    QStringList proposedNames;
};

} // namespace

class DocumentsScreensTest : public QObject {
    Q_OBJECT

private slots:
    // Tab from the table reaches the first action; Return on it presses the last (as
    // on the rented and returns lists, which the keys and history tests press).
    void actionOrder() {
        const QStringList actions{"LANÇAMENTO", "FECHAMENTO", "EXPORTAR CSV"};
        DocumentsShop shop;
        QVERIFY(shop.open());
        shop.press(Qt::Key_X);
        QStringList shown, pressed;
        for (DOSButton* action : shop.app->screen.actionButtons) {
            shown.append(action->text());
            connect(action, &QAbstractButton::clicked, [&pressed, action] { pressed.append(action->text()); });
        }
        QCOMPARE(shown, actions);
        shop.app->focus(shop.app->table);
        DialogAnswerer any(DialogAnswerer::pressKey(Qt::Key_Escape));
        shop.press(Qt::Key_Return);
        QCOMPARE(pressed, QStringList{actions.last()});
        shop.app->focus(shop.app->table);
        shop.press(Qt::Key_Tab);
        QCOMPARE(shop.focused(), shop.app->screen.actionButtons.first());
    }

    // F10 before any act prints nothing and says nothing; after a return, and then a rental, it prints that act.
    void receiptOfTheLastAct() {
        DocumentsShop shop;
        QVERIFY(shop.open());
        {
            DialogAnswerer none(DialogAnswerer::pressKey(Qt::Key_Escape));
            shop.press(Qt::Key_F10);
            QVERIFY(shop.opened.isEmpty() && !none.answered());
        }

        shop.returnByKeys("LATE-2");
        QVERIFY(shop.app->status->text().contains("[F10] RECIBO"));
        shop.press(Qt::Key_F10);
        QCOMPARE(QFileInfo(shop.opened.value(0)).fileName(), "Recibo.html");
        QVERIFY(shop.lastPage().contains("RECIBO DE DEVOLUÇÃO") && shop.lastPage().contains("ALIEN"));

        shop.press(Qt::Key_F3);
        for (const auto& [key, text] : {std::pair{"code", "1"}, std::pair{"client", "maria silva"}}) {
            shop.app->focus(shop.field(key));
            typeText(shop.field(key), text);
        }
        shop.button("SALVAR")->click();
        QVERIFY(shop.app->status->text().contains("[F10] RECIBO"));
        shop.press(Qt::Key_F10);
        QCOMPARE(shop.opened.size(), 2);
        QVERIFY(shop.lastPage().contains("RECIBO DE LOCAÇÃO") && shop.lastPage().contains("COD-0001-002"));
    }

    // A returned tape leaves the notices; with none late there is a word and no page.
    void noticesAfterReturns() {
        DocumentsShop shop;
        QVERIFY(shop.open());
        shop.returnByKeys("LATE-2");
        shop.pressNotices();
        QCOMPARE(QFileInfo(shop.opened.value(0)).fileName(), "Avisos-de-atraso.html");
        QVERIFY(shop.lastPage().contains("TUBARÃO") && !shop.lastPage().contains("ALIEN"));

        shop.returnByKeys("LATE-1");
        DialogAnswerer nothingLate(DialogAnswerer::pressKey(Qt::Key_Return));
        shop.pressNotices();
        QCOMPARE(nothingLate.seen().text, "Nenhuma fita em atraso.");
        QCOMPARE(shop.opened.size(), 1);
    }

    void closing_data() {
        QTest::addColumn<QString>("day");
        QTest::addColumn<int>("button"); // in the closing dialog, reached by Tab; -1: Escape
        QTest::addColumn<QString>("written");
        QTest::newRow("printed") << "08/05/2026" << 0 << "Fechamento-de-caixa.html";
        QTest::newRow("exported") << "08/05/2026" << 1 << "CINEFITA-caixa-2026-05-08.csv";
        QTest::newRow("closed") << "08/05/2026" << 2 << "";
        QTest::newRow("escape writes nothing") << "08/05/2026" << -1 << "";
        QTest::newRow("no such day") << "31/02/2026" << 0 << "";
    }

    // FECHAMENTO by keys: the day typed over today's, then a button of the closing dialog.
    void closing() {
        QFETCH(QString, day);
        QFETCH(int, button);
        QFETCH(QString, written);
        DocumentsShop shop;
        QVERIFY(shop.open());
        shop.press(Qt::Key_X);
        shop.app->focus(shop.app->table);
        QVERIFY(shop.tabTo(shop.button("FECHAMENTO")));
        std::unique_ptr<DialogAnswerer> closing;
        DialogAnswerer asked([&](StyledDialog* dialog) {
            QCOMPARE(dialog->accessory()->findChild<DOSField*>()->text(), "09/05/2026");
            closing = std::make_unique<DialogAnswerer>([button](StyledDialog* shown) {
                if (button < 0)
                    return QTest::keyClick(shown->focusWidget() != nullptr ? shown->focusWidget() : shown,
                                           Qt::Key_Escape);
                for (int step = 0; step < 6 && shown->focusWidget() != shown->buttons().at(button); ++step)
                    QTest::keyClick(shown->focusWidget() != nullptr ? shown->focusWidget() : shown, Qt::Key_Tab);
                QTest::keyClick(shown->buttons().at(button), Qt::Key_Return);
            });
            QWidget* field = dialog->focusWidget();
            QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
            typeText(field, day);
            QTest::keyClick(field, Qt::Key_Return);
        });
        shop.press(Qt::Key_Return);
        QVERIFY(asked.answered() && closing != nullptr && closing->answered());

        const QDate eighth(2026, 5, 8);
        const CashDay expected = cashDay(shop.app->store, eighth);
        const bool valid = typedDay(day).has_value();
        QCOMPARE(closing->seen().title, valid ? cashDayTitle(eighth) : QStringLiteral("Data inválida"));
        if (valid)
            QCOMPARE(closing->seen().text,
                     cashDayText(expected).replace(QChar(0x00A0), u' ')); // the box shows plain spaces
        const QByteArray page = button == 0 && valid ? cashClosingPage(shop.app->store, eighth).toUtf8() : QByteArray();
        QCOMPARE(shop.lastPage(), page);
        QCOMPARE(shop.proposedNames, button == 1 ? QStringList{written} : QStringList{});
        if (!written.isEmpty()) {
            const QString path = button == 0 ? shop.opened.value(0) : shop.dir.filePath(written);
            QCOMPARE(QFileInfo(path).fileName(), written);
            QCOMPARE(fileBytes(path), button == 0 ? page : cashDayCSV(expected).toUtf8());
        }
    }
};

QTEST_MAIN(DocumentsScreensTest)
#include "test_documents_screens.moc"
