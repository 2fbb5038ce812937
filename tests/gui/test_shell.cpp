#include "gui/GuiSupport.h"

#include "look/DOS.h"
#include "look/DOSButton.h"
#include "look/DOSSearchField.h"
#include "look/DOSTable.h"
#include "look/SplashView.h"
#include "records/DateText.h"
#include "storage/LocalDatabase.h"
#include "support/RawDatabase.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

DOSButton* navButton(App& app, const QString& title) {
    for (DOSButton* button : app.navButtons)
        if (button->text() == title)
            return button;
    return nullptr;
}

QStringList titles(const QList<DOSButton*>& buttons) {
    QStringList result;
    for (const DOSButton* button : buttons)
        result.append(button->text());
    return result;
}

Store storeWithFilm() {
    Store store;
    store.films.append(Film{.id = "F1", .title = "TUBARÃO", .genre = "Suspense", .copies = 2, .price = 500, .code = 1});
    return store;
}

QString databasePath(const QTemporaryDir& dir) {
    return dir.filePath("cinefita.sqlite");
}

} // namespace

class ShellTest : public QObject {
    Q_OBJECT

private slots:
    void splashLeadsToTheMainMenu_data();
    void splashLeadsToTheMainMenu();
    void windowFrameAndMenuBar();
    void navigationMovesFocus();
    void listSectionsGetTheirRows();
    void commitSavesAndAdopts();
    void commitFailureKeepsTheStore();
    void commitWithoutDatabase();
    void invalidDatabaseStopsTheLaunch();
    void debtAlertBlinks();
};

void ShellTest::splashLeadsToTheMainMenu_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("keypad Enter") << int(Qt::Key_Enter);
    QTest::newRow("Space") << int(Qt::Key_Space);
}

void ShellTest::splashLeadsToTheMainMenu() {
    QFETCH(int, key);
    QTemporaryDir dir;
    TestApp app(dir.path());
    QVERIFY(app.launch());
    QVERIFY(app->showingSplash);
    QVERIFY(!app->workingView->isVisible());
    QCOMPARE(app->window->windowTitle(), QStringLiteral("CINEFITA — LOCADORA"));
    QCOMPARE(app->brand->text(), QStringLiteral("LOCADORA"));

    // Other keys leave the splash where it is.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_X);
    QVERIFY(app->showingSplash);

    QTest::keyClick(QApplication::focusWidget(), Qt::Key(key));
    QVERIFY(!app->showingSplash);
    QCOMPARE(app->section, 11);
    QVERIFY(app->workingView->isVisible());
    QCOMPARE(QApplication::focusWidget(), app->menuHeading);
    QVERIFY(app->menuHeading->isOn());
}

void ShellTest::windowFrameAndMenuBar() {
    QTemporaryDir dir;
    {
        LocalDatabase database(databasePath(dir));
        Store named;
        named.locadoraName = "Vídeo Clube Estrela";
        database.save(named);
    }
    TestApp app(dir.path());
    QVERIFY(app.launch());
    QCOMPARE(app->window->windowTitle(), QStringLiteral("CINEFITA — Vídeo Clube Estrela"));
    QCOMPARE(app->brand->text(), QStringLiteral("VÍDEO CLUBE ESTRELA"));
    QCOMPARE(app->status->text(), dateText(app->clock()));
    QCOMPARE(app->window->centralWidget()->size(), QSize(1260, 850));
    QCOMPARE(app->window->centralWidget()->minimumSize(), QSize(1080, 760));
    QCOMPARE(app->navButtons.size(), 7);
    QCOMPARE(app->footerButtons.size(), 2);
    QCOMPARE(app->navButtons.first()->shortcutRange(), std::make_optional(std::pair<int, int>(0, 4)));
    QCOMPARE(app->settingsButton->accessibleName(), QStringLiteral("Alterar nome da locadora"));
    QVERIFY(!app->table->showGrid()); // rows are parted by vertical lines only
    QVERIFY(!app->navButtons.first()->showsFocusOutline());
    QVERIFY(app->footerButtons.first()->showsFocusOutline());
    const std::unique_ptr<QLabel> markup(app->label("<b>A & B</b>"));
    QCOMPARE(markup->textFormat(), Qt::PlainText); // titles are never markup

    const QList<QAction*> menus = app->window->menuBar()->actions();
    QCOMPARE(menus.size(), 2);
    QCOMPARE(menus[0]->text(), QStringLiteral("CINEFITA"));
    QStringList items;
    for (QAction* item : menus[0]->menu()->actions())
        items << item->text() + " " + item->shortcut().toString(QKeySequence::PortableText);
    QCOMPARE(items, QStringList({"Nome da locadora… Ctrl+,", "Exportar tela CSV Ctrl+E", "Backup Ctrl+B",
                                 "Caixa Ctrl+K", "Restaurar cadastro apagado… ", "Sair do CINEFITA Ctrl+Q"}));
    QCOMPARE(menus[1]->text(), QStringLiteral("Editar"));

    // The program's menu keys win over the search field's own editing keys.
    app->enterProgram();
    app->focus(app->search);
    QTest::keyClick(app->search, Qt::Key_K, Qt::ControlModifier);
    QCOMPARE(app->section, 6);

    // "Selecionar tudo" acts on the focused field.
    app->search->setText("fita");
    app->focus(app->search);
    app->search->deselect();
    menus[1]->menu()->actions().at(3)->trigger();
    QCOMPARE(app->search->selectedText(), QStringLiteral("fita"));

    // Closing the main window is never refused.
    QVERIFY(app->windowShouldClose(app->window));
}

void ShellTest::navigationMovesFocus() {
    QTemporaryDir dir;
    TestApp app(dir.path());
    QVERIFY(app.launch());
    app->enterProgram();

    app->search->setText("tubarão");
    app->navigate(5);
    QVERIFY(app->search->text().isEmpty());
    QCOMPARE(QApplication::focusWidget(), navButton(*app.app, "[F6] RELATÓRIOS"));
    QVERIFY(navButton(*app.app, "[F6] RELATÓRIOS")->isOn());
    QVERIFY(!app->menuHeading->isOn());

    app->navigate(6);
    QCOMPARE(QApplication::focusWidget(), app->search.data());
    // A field that takes the focus shows its selection black on green.
    QCOMPARE(app->search->palette().color(QPalette::Active, QPalette::Highlight), DOS::yellow());
    QCOMPARE(app->search->palette().color(QPalette::Active, QPalette::HighlightedText), DOS::ink());

    navButton(*app.app, "[F1] CADASTRAR FITA")->click();
    QCOMPARE(app->section, 4);

    // The suggestion and the exit are commands, not sections.
    navButton(*app.app, "[F7] SUGESTÃO DA CASA")->click();
    app->footerButtons.last()->click();
    QCOMPARE(app->section, 4);

    app->menuHeading->click();
    QCOMPARE(app->section, 11);
    QCOMPARE(QApplication::focusWidget(), app->menuHeading);
}

void ShellTest::listSectionsGetTheirRows() {
    QTemporaryDir dir;
    TestApp app(dir.path());
    QVERIFY(app.launch());
    app->enterProgram();

    app->navigate(4);
    QVERIFY(app->sortButton != nullptr && app->importButton != nullptr);
    QCOMPARE(app->sortButton->text(), QStringLiteral("ORDEM: A–Z"));
    QCOMPARE(titles(app->actionButtons), QStringList({"BAIXAR ARQUIVO CSV", "EDITAR", "APAGAR", "SELECIONAR"}));

    app->alphabeticalClients = false;
    app->navigate(3);
    QCOMPARE(app->sortButton->text(), QStringLiteral("ORDEM: CÓDIGO"));
    QVERIFY(app->importButton == nullptr);

    app->navigate(5);
    QCOMPARE(titles(app->actionButtons), QStringList({"BAIXAR ARQUIVO CSV", "RELATÓRIO MATRICIAL"}));
    QVERIFY(app->actionButtons.last()->width() >= 193);
    QVERIFY(app->sortButton == nullptr);

    // The home screen is the splash drawn inside the body, without its button.
    app->navigate(11);
    QCOMPARE(app->bodyViews().size(), 1);
    auto* home = qobject_cast<SplashView*>(app->bodyViews().first());
    QVERIFY(home != nullptr);
    QVERIFY(!home->enterButton()->isVisible());
    QVERIFY(app->actionButtons.isEmpty());
}

void ShellTest::commitSavesAndAdopts() {
    QTemporaryDir dir;
    TestApp app(dir.path());
    QVERIFY(app.launch());
    const Store changed = storeWithFilm();
    QVERIFY(app->commit(changed));
    QCOMPARE(app->store, changed);
    QCOMPARE(app->status->text(), QStringLiteral("SALVO NO BANCO LOCAL"));
    app->render();
    QCOMPARE(app->status->text(), dateText(app->clock()));
    QCOMPARE(LocalDatabase(databasePath(dir)).load(), std::make_optional(changed));
}

void ShellTest::commitFailureKeepsTheStore() {
    QTemporaryDir dir;
    TestApp app(dir.path());
    QVERIFY(app.launch());
    const Store saved = app->store;

    // Another connection holds the write lock past the database's busy timeout.
    RawDatabase other(databasePath(dir));
    QVERIFY(other.exec("BEGIN IMMEDIATE;"));

    DialogAnswerer answerer(DialogAnswerer::pressKey(Qt::Key_Return));
    QVERIFY(!app->commit(storeWithFilm()));
    other.exec("ROLLBACK;");

    QVERIFY(answerer.answered());
    QCOMPARE(answerer.seen().title, QStringLiteral("Não foi possível salvar"));
    QVERIFY(answerer.seen().text.startsWith("Falha no banco local: "));
    QCOMPARE(app->store, saved);
    QVERIFY(app->status->text() != QStringLiteral("SALVO NO BANCO LOCAL"));
    QCOMPARE(LocalDatabase(databasePath(dir)).load(), std::make_optional(saved));
}

void ShellTest::commitWithoutDatabase() {
    QTemporaryDir dir;
    TestApp app(dir.path());
    DialogAnswerer answerer(DialogAnswerer::pressKey(Qt::Key_Escape));
    QVERIFY(!app->commit(storeWithFilm()));
    QCOMPARE(answerer.seen().title, QStringLiteral("Não foi possível salvar"));
    QCOMPARE(answerer.seen().text, QStringLiteral("Banco local não iniciado."));
    QCOMPARE(app->store, Store());
}

void ShellTest::invalidDatabaseStopsTheLaunch() {
    QTemporaryDir dir;
    const QByteArray garbage(4096, 'x');
    {
        QFile file(databasePath(dir));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(garbage);
    }
    TestApp app(dir.path());
    DialogAnswerer answerer(DialogAnswerer::clickButton(0));
    app->launch();

    QVERIFY(answerer.answered());
    QCOMPARE(answerer.seen().title, QStringLiteral("Dados indisponíveis"));
    QVERIFY(!answerer.seen().text.isEmpty());
    QCOMPARE(app.terminations, 1);
    QVERIFY(app->window == nullptr);
    QFile file(databasePath(dir));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), garbage);
}

void ShellTest::debtAlertBlinks() {
    QTemporaryDir dir;
    const Instant now{800000000};
    {
        Store store = storeWithFilm();
        store.rentals.append(Rental{.id = "R1",
                                    .film = "F1",
                                    .customer = "C1",
                                    .start = now.plusSeconds(-5 * 86400),
                                    .due = now.plusSeconds(-2 * 86400),
                                    .price = 500,
                                    .finePerDay = 200,
                                    .copy = 1});
        LocalDatabase(databasePath(dir)).save(store);
    }
    TestApp app(dir.path(), now);
    QVERIFY(app.launch());

    QList<QColor> colours;
    connect(app->blinkTimer, &QTimer::timeout, app->status,
            [&] { colours.append(app->status->palette().color(QPalette::WindowText)); });
    QTRY_VERIFY_WITH_TIMEOUT(colours.size() >= 3, 5000);
    QCOMPARE(app->status->text(), QStringLiteral("ATENÇÃO: CLIENTE EM DÉBITO"));
    QVERIFY(colours[0] != colours[1]);
    QCOMPARE(colours[0], colours[2]);
    QVERIFY(colours.contains(DOS::blue()));

    // Once the tape is back the line keeps its text in the ordinary colour.
    Store returned = app->store;
    returned.rentals[0].returned = now;
    QVERIFY(app->commit(returned));
    app->updateDebtAlert();
    QCOMPARE(app->status->text(), QStringLiteral("SALVO NO BANCO LOCAL"));
    QCOMPARE(app->status->palette().color(QPalette::WindowText), DOS::text());
}

QTEST_MAIN(ShellTest)
#include "test_shell.moc"
