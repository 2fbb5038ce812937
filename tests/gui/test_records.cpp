#include "gui/GuiSupport.h"

#include "records/RentalRules.h"
#include "support/Files.h"

#include <QDir>
#include <QLabel>

namespace {

// Films 3 and 7 (the 7 removed, its copy 3 out with customer 12).
Store shop() {
    Store store;
    store.films = {Film{.id = "F3", .title = "ALIEN", .genre = "Terror", .copies = 3, .price = 400, .code = 3},
                   Film{.id = "F7", .title = "TUBARÃO", .copies = 3, .price = 550, .code = 7, .deleted = true}};
    store.customers = {Customer{.id = "C12", .name = "ANA", .phone = "(11) 5555", .code = 12}};
    store.rentals = {Rental{.id = "R1", .film = "F7", .customer = "C12", .due = Instant{900000000}, .copy = 3}};
    return store;
}

} // namespace

class RecordsTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        disk = std::make_unique<ShopOnDisk>();
        opened.clear();
        app()->seams.openPrintPage = [this](const QString& path) {
            opened.append(QFileInfo(path).fileName());
        };
        QVERIFY(disk->launch(shop()));
        app()->enterProgram();
    }

    void formsAsOpened_data() {
        QTest::addColumn<int>("section");
        QTest::addColumn<QString>("id");
        QTest::addColumn<QStringList>("buttons");
        QTest::addColumn<QString>("code");
        const int films = Section::films, customers = Section::customers;
        QTest::newRow("new film") << films << "" << QStringList{"SALVAR"} << "COD-0008";
        QTest::newRow("film") << films << "F3" << QStringList{"HISTÓRICO", "ETIQUETAS", "EDITAR", "APAGAR", "SALVAR"}
                              << "COD-0003";
        QTest::newRow("new customer") << customers << "" << QStringList{"FINALIZAR"} << "0013";
        QTest::newRow("customer") << customers << "C12"
                                  << QStringList{"IMPRIMIR CARTEIRINHA", "HISTÓRICO", "EDITAR", "APAGAR", "FINALIZAR"}
                                  << "0012";
    }

    void formsAsOpened() {
        QFETCH(int, section);
        QFETCH(QString, id);
        QFETCH(QStringList, buttons);
        QFETCH(QString, code);
        open(section, id);
        QStringList shown;
        for (const DOSButton* button : app()->screen.tabs + app()->screen.actionButtons)
            shown.append(button->text());
        QCOMPARE(shown, buttons);
        QCOMPARE(app()->screen.formView->value("code"), code);
        DOSField* name = disk->field("name");
        QCOMPARE(QApplication::focusWidget(), name);
        QCOMPARE(name->isReadOnly(), !id.isEmpty());
        press("EDITAR");
        QVERIFY(!name->isReadOnly());
        QCOMPARE(disk->field("code")->isReadOnly(), section == Section::films);
    }

    // An edited film is saved under its own id, so its own rented copy counts. The
    // refusals are the list rules' rows; the alert and the form kept as typed, the hostile test's.
    void editedFilmRefused() {
        const Store before = app()->store;
        open(Section::films, "F7");
        app()->enableEdit();
        disk->field("copies")->setText("2");
        const SeenDialog seen = press("SALVAR");
        QCOMPARE(seen.title + ": " + seen.text,
                 "Quantidade insuficiente: Há mais exemplares locados que a quantidade informada.");
        QCOMPARE(app()->store, before);
    }

    void deleteIsGuardedThenRestored() {
        open(Section::customers, "C12");
        QCOMPARE(press("APAGAR").title, QStringLiteral("Cadastro em uso"));
        QVERIFY(app()->commit(returnedStore(app()->store, "R1", true, Instant{800000000})));
        QCOMPARE(press("APAGAR").title, QStringLiteral("Apagar cadastro?"));
        QVERIFY(app()->store.customers.first().deleted.value_or(false));

        const auto restore = [this](const QString& kind, const QString& code) {
            DialogSequence dialogs({fillForm({kind, code}), DialogAnswerer::pressKey(Qt::Key_Return)});
            app()->restoreRecord();
            return dialogs.titles().value(1);
        };
        QCOMPARE(restore("FILME", "12"), QStringLiteral("Não encontrado"));
        QCOMPARE(restore("cliente", "0012"), QString());
        QVERIFY(!app()->store.customers.first().deleted.value_or(false));
    }

    // The size asked by keys over the proposed one; a refused size is the print pages' rows.
    void labelSize() {
        open(Section::films, "F3");
        QStringList proposed;
        const SeenDialog seen = press("ETIQUETAS", [&](StyledDialog* dialog) {
            for (DOSField* field : dialog->findChildren<DOSField*>())
                proposed.append(field->text());
            for (const char* text : {"72,5", "20"}) {
                QTest::keyClick(dialog->focusWidget(), Qt::Key_A, Qt::ControlModifier);
                QTest::keyClicks(dialog->focusWidget(), QString(text) + "\t");
            }
            QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
        });
        QCOMPARE(seen.title + " " + seen.buttons.first(), QStringLiteral("TAMANHO DA ETIQUETA (mm) IMPRIMIR"));
        QCOMPARE(proposed, QStringList({"70", "18", "1", "TODOS"}));
        QCOMPARE(opened, QStringList{"Etiquetas-VHS.html"});
        const QString page = fileText(disk->dir.filePath("Impressos/Etiquetas-VHS.html"));
        QVERIFY(page.contains("ETIQUETAS VHS — 72.5 × 20.0 mm"));
        QCOMPARE(page.count("COD-0003-00"), 3); // one label per copy
    }

    void cardOnlyForAnActiveCustomer() {
        open(Section::customers, "C12");
        QCOMPARE(press("IMPRIMIR CARTEIRINHA").title, QString());
        QCOMPARE(opened, QStringList{"Carteirinha-0012.html"});
        Store removed = shop();
        removed.customers.first().deleted = true;
        QVERIFY(app()->commit(removed));
        QCOMPARE(press("IMPRIMIR CARTEIRINHA").title, QStringLiteral("Carteirinha"));
        QCOMPARE(opened.size(), 1);
    }

    void reportPageHoldsTheListedRows() {
        Store named = shop();
        named.locadoraName = "VÍDEO \"A&B\" <1>";
        QVERIFY(app()->commit(named));
        app()->navigate(Section::reports);
        app()->printReport();
        const QString page = fileText(disk->dir.filePath("Impressos/" + opened.value(0)));
        QVERIFY(page.contains("<pre>CINEFITA • VÍDEO &quot;A&amp;B&quot; &lt;1&gt;\nRELATÓRIO MATRICIAL • "));
        const QString rows = page.section(QString(70, u'═') + "\n", 1).section("</pre>", 0, 0);
        // Indicator and value of each line; the graph column is the graph's own test.
        const QStringList expected = {"FITAS CADASTRADAS   1   ",    "QUANTIDADE NO ACERVO   3   ",
                                      "CLIENTES CADASTRADOS   1   ", "FITAS ALUGADAS   1   ",
                                      "FITAS ATRASADAS   0   ",      "FILMES JÁ LOCADOS (TOTAL)   1   "};
        const QStringList printed = rows.split('\n');
        QCOMPARE(printed.size(), expected.size());
        for (qsizetype i = 0; i < printed.size(); ++i)
            QVERIFY2(printed[i].startsWith(expected[i]), qPrintable(printed[i]));
    }

    // The list goes out as the screen shows it (the removed film left out) and comes
    // back; each value's round trip is the exchange tests'.
    void filmListExportImportsBack() {
        app()->navigate(Section::films);
        // The chosen name first taken by a folder: the write fails and leaves nothing beside it.
        QDir folder(disk->dir.path());
        QVERIFY(folder.mkpath("saida/CINEFITA-lista.csv"));
        QString into = "saida/";
        app()->seams.chooseSaveFile = [&](const QString&, const QString& proposed, const QString&) {
            return folder.filePath(into + proposed);
        };
        const QString status = app()->status->text();
        DialogAnswerer failure(DialogAnswerer::pressKey(Qt::Key_Return));
        app()->exportCSV();
        QCOMPARE(failure.seen().title, QStringLiteral("Falha na exportação"));
        QCOMPARE(QDir(folder.filePath("saida")).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
                 QStringList{"CINEFITA-lista.csv"});
        QCOMPARE(app()->status->text(), status);
        into.clear();
        app()->exportCSV();
        QCOMPARE(app()->status->text(), QStringLiteral("EXPORTADO  │  CINEFITA-lista.csv"));

        QVERIFY(app()->commit(Store{})); // an empty shop reads the file back
        app()->seams.chooseOpenFile = [&folder](const QString&, const QString&) {
            return folder.filePath("CINEFITA-lista.csv");
        };
        DialogAnswerer done(DialogAnswerer::pressKey(Qt::Key_Return));
        app()->importFilmCSV();
        QCOMPARE(done.seen().text, QStringLiteral("1 filme(s) cadastrado(s)."));
        QCOMPARE(disk->saved().films.value(0).title, QStringLiteral("ALIEN"));
    }

private:
    void open(int section, const QString& id = {}) {
        app()->navigate(section);
        app()->editID = id.isEmpty() ? std::nullopt : std::optional(id);
        app()->recordScreen(app()->editID);
    }

    // Presses the action button with that title; the dialog it raises (if any) is answered by keys.
    SeenDialog press(const QString& title, const DialogAnswerer::Answer& answer = {}) {
        DialogAnswerer answerer(answer ? answer : DialogAnswerer::pressKey(Qt::Key_Return));
        if (DOSButton* button = disk->button(title))
            button->click();
        return answerer.seen();
    }

    App* app() const { return disk->app.app.get(); }

    std::unique_ptr<ShopOnDisk> disk;
    QStringList opened;
};

QTEST_MAIN(RecordsTest)
#include "test_records.moc"
