#include "gui/GuiSupport.h"

#include "exchange/ScreenExport.h"
#include "look/DOSTable.h"
#include "records/DateText.h"
#include "records/History.h"
#include "records/MoneyText.h"
#include "records/RentalRules.h"
#include "records/StoreJSON.h"
#include "support/Files.h"
#include "support/RawDatabase.h"

#include <QDir>
#include <QLabel>

namespace {

const Instant now{800000000};
constexpr double day = 86400;

// ANA LIMA has TWISTER copy 1 out, three days late at 2,00 a day, and returned
// VERTIGO before; ZECA returned TWISTER copy 2.
Store shop() {
    Store store;
    store.films = {Film{.id = "F1", .title = "TWISTER", .genre = "Ação", .copies = 2, .price = 300, .code = 1},
                   Film{.id = "F2", .title = "VERTIGO", .genre = "Terror", .copies = 1, .price = 400, .code = 2}};
    store.customers = {Customer{.id = "C1", .name = "ANA LIMA", .phone = "(11) 5555", .code = 1},
                       Customer{.id = "C2", .name = "ZECA", .phone = "(11) 6666", .code = 2}};
    const auto rental = [](const char* id, const char* film, const char* customer, double start, qint64 copy) {
        return Rental{.id = id,
                      .film = film,
                      .customer = customer,
                      .start = now.plusSeconds(-start * day),
                      .due = now.plusSeconds((2 - start) * day),
                      .price = 300,
                      .finePerDay = 200,
                      .copy = copy};
    };
    store.rentals = {rental("R2", "F2", "C1", 20, 1), rental("R3", "F1", "C2", 10, 2), rental("R1", "F1", "C1", 5, 1)};
    store = returnedStore(store, "R2", true, now.plusSeconds(-17 * day));
    store = returnedStore(store, "R3", false, now.plusSeconds(-8 * day));
    return store;
}

const DialogAnswerer::Answer enter = DialogAnswerer::pressKey(Qt::Key_Return);

} // namespace

class HistoryScreensTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        disk = std::make_unique<ShopOnDisk>(now);
        QVERIFY(disk->launch(shop()));
        app()->enterProgram();
    }

    // The history opens on its table and leaves with Escape for the record it came
    // from (the record's buttons, HISTÓRICO among them, are the records test's).
    void historyFromRecord_data() {
        QTest::addColumn<int>("functionKey");
        QTest::addColumn<QStringList>("columns");
        QTest::addColumn<QStringList>("rentals");
        QTest::newRow("customer") << int(Qt::Key_F2) << customerHistoryColumns() << QStringList{"R1", "R2"};
        QTest::newRow("film") << int(Qt::Key_F4) << filmHistoryColumns() << QStringList{"R1", "R3"};
    }

    void historyFromRecord() {
        QFETCH(int, functionKey);
        QFETCH(QStringList, columns);
        QFETCH(QStringList, rentals);
        openFirstRecord(Qt::Key(functionKey));
        const std::optional<QString> opened = app()->editID;
        openHistory();
        QCOMPARE(disk->focused(), app()->table.data());
        QCOMPARE(app()->table->model()->headerData(int(columns.size()) - 1, Qt::Horizontal).toString(), columns.last());
        app()->rows();
        QCOMPARE(app()->filteredIDs, rentals);

        DialogAnswerer leaving(DialogAnswerer::pressKey(Qt::Key_Escape));
        disk->press(Qt::Key_Escape); // back to the record, not out of the program
        QVERIFY(!leaving.answered());
        QVERIFY(app()->screen.history == nullptr && app()->screen.formView != nullptr);
        QCOMPARE(app()->editID, opened);
    }

    // Found in the drop box a day after it was due. Forgiving more than its fine is
    // refused and changes nothing (each rule's refusals are the adjusted-return test's
    // rows); with part of it forgiven, the return at that instant, and the customer's
    // history shows what was forgiven.
    void adjustedReturnShowsInHistory() {
        const Store before = app()->store;
        const QString back = dateTimeText(now.plusSeconds(-2 * day)); // a day late: a fine of 2,00
        toReturnsList();
        QCOMPARE(shownButtons(), (QStringList{"DEVOLUÇÃO ESPECIAL", "FINALIZAR"}));
        DialogAnswerer usual(DialogAnswerer::pressKey(Qt::Key_Escape));
        disk->press(Qt::Key_Return); // on the table: still FINALIZAR's question
        QCOMPARE(usual.seen().title, QStringLiteral("FITA FOI REBOBINADA? [S/N]"));
        {
            DialogSequence refused({fillForm({back, "2,01", "CAIXA"}), enter});
            pressAdjustedReturn();
            QCOMPARE(refused.titles(), (QStringList{"DEVOLUÇÃO ESPECIAL", "Abono maior que a multa"}));
            QVERIFY(app()->store == before && disk->saved() == before);
        }
        DialogSequence dialogs({fillForm({back, "1,50", "CAIXA DE COLETA"}), DialogAnswerer::pressKey(Qt::Key_N)});
        pressAdjustedReturn();
        QCOMPARE(dialogs.titles(), (QStringList{"DEVOLUÇÃO ESPECIAL", "FITA FOI REBOBINADA? [S/N]"}));

        const Store saved = disk->saved();
        QCOMPARE(saved, app()->store);
        const Rental& returned = saved.rentals.last();
        QCOMPARE(returned.returned, parseDateTime(back));
        QVERIFY(returned.fine == 200 && returned.rewindFee == 100);

        openFirstRecord(Qt::Key_F2);
        openHistory();
        QCOMPARE(app()->rows().first().last(), money(150)); // R1's ABONO (the rows are the customer history case's)
        const auto plain = [](QString text) {
            return text.replace(QChar::Nbsp, u' ');
        };
        bool summarised = false;
        for (const QLabel* label : app()->bodyViews().first()->findChildren<QLabel*>())
            summarised |= plain(label->text()).contains(plain("MULTAS PAGAS: " + money(200 + 50))) &&
                          plain(label->text()).contains(plain("ABONOS: " + money(150)));
        QVERIFY(summarised);

        disk->press(Qt::Key_F, Qt::ControlModifier);
        disk->type("vertigo");
        app()->rows();
        QCOMPARE(app()->filteredIDs, QStringList{"R2"});
        const QString path = disk->dir.filePath("historico.csv");
        app()->seams.chooseSaveFile = [&path](const QString&, const QString&, const QString&) {
            return path;
        };
        QVERIFY(disk->tabTo(disk->button("EXPORTAR CSV")));
        disk->press(Qt::Key_Space);
        QCOMPARE(fileBytes(path), csv(QList<QStringList>{customerHistoryColumns()} + app()->rows()).toUtf8());
        QVERIFY(fileText(path).contains("VERTIGO") && !fileText(path).contains("TWISTER"));
    }

    // A refused file and a restore that goes through; the rows change only in the
    // second, where the replaced document becomes the previous one (a failed commit
    // is the shell's and the storage tests').
    void restore_data() {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QStringList>("titles");
        QTest::newRow("file cut short") << "cut" << QStringList{"Backup não restaurado"};
        QTest::newRow("restored") << "" << QStringList{"RESTAURAR BACKUP?"};
    }

    void restore() {
        QFETCH(QString, fault);
        QFETCH(QStringList, titles);
        Store other;
        other.locadoraName = QStringLiteral("OUTRA LOJA");
        other.films = {shop().films.first()};
        QByteArray backup = backupText(other).toUtf8();
        if (fault == "cut")
            backup.chop(backup.size() / 2);
        const QString path = disk->dir.filePath("backup.json");
        QVERIFY(writeFile(path, backup));
        app()->seams.chooseOpenFile = [&path](const QString&, const QString&) {
            return path;
        };
        const QString database = disk->dir.filePath("cinefita.sqlite");
        const Store before = app()->store;
        std::optional<QByteArray> state, previous;
        {
            RawDatabase raw(database);
            state = raw.payload("state");
            previous = raw.payload("previous_state");
        }

        DialogSequence dialogs({enter, enter});
        disk->press(Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(dialogs.titles(), titles);

        RawDatabase raw(database);
        if (!fault.isEmpty()) {
            QCOMPARE(app()->store, before);
            QCOMPARE(raw.payload("state"), state);
            QCOMPARE(raw.payload("previous_state"), previous);
            return;
        }
        QCOMPARE(app()->store.locadoraName, other.locadoraName);
        QCOMPARE(raw.payload("previous_state"), state);
        QCOMPARE(disk->saved(), app()->store);
    }

private:
    App* app() const { return disk->app.app.get(); }

    // The first row of the list the key opens, opened with Return (SELECIONAR).
    void openFirstRecord(Qt::Key functionKey) {
        disk->press(functionKey);
        QVERIFY(disk->tabTo(app()->table));
        disk->press(Qt::Key_Down);
        disk->press(Qt::Key_Up); // the table may come with its first row current but not selected
        disk->press(Qt::Key_Return);
        QVERIFY(app()->screen.formView != nullptr);
    }

    QStringList shownButtons() const {
        QStringList shown;
        for (const DOSButton* button : app()->screen.tabs + app()->screen.actionButtons)
            shown.append(button->text());
        return shown;
    }

    void openHistory() {
        QVERIFY(disk->tabTo(disk->button("HISTÓRICO")));
        disk->press(Qt::Key_Space);
        QVERIFY(app()->screen.history != nullptr);
    }

    // The one open rental chosen on the rented list and taken to the returns list.
    void toReturnsList() {
        disk->press(Qt::Key_F5);
        QVERIFY(disk->tabTo(app()->table));
        disk->press(Qt::Key_Down);
        DialogAnswerer details(enter); // DEVOLUÇÃO
        disk->press(Qt::Key_Return);
        QCOMPARE(app()->section, int(Section::returns));
    }

    void pressAdjustedReturn() {
        QVERIFY(disk->tabTo(disk->button("DEVOLUÇÃO ESPECIAL")));
        disk->press(Qt::Key_Space);
    }

    std::unique_ptr<ShopOnDisk> disk;
};

QTEST_MAIN(HistoryScreensTest)
#include "test_history_screens.moc"
