#include "gui/GuiSupport.h"

#include "look/DOS.h"
#include "look/DOSSearchField.h"
#include "look/SplashView.h"
#include "records/DateText.h"
#include "support/Files.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>

namespace {

Store storeWithFilm() {
    Store store;
    store.films.append(Film{.id = "F1", .title = "TUBARÃO", .genre = "Suspense", .copies = 2, .price = 500, .code = 1});
    return store;
}

} // namespace

class ShellTest : public QObject {
    Q_OBJECT

private slots:
    void splashKeys_data() {
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("leaves");
        QTest::addColumn<int>("section");
        QTest::newRow("keypad Enter") << int(Qt::Key_Enter) << true << int(Section::home);
        QTest::newRow("Space") << int(Qt::Key_Space) << true << int(Section::home);
        QTest::newRow("F3 opens the rental screen") << int(Qt::Key_F3) << true << int(Section::rental);
        QTest::newRow("F8 only leaves") << int(Qt::Key_F8) << true << int(Section::home);
        QTest::newRow("a letter stays") << int(Qt::Key_X) << false << 0;
    }

    void splashKeys() {
        QFETCH(int, key);
        QFETCH(bool, leaves);
        QFETCH(int, section);
        QTemporaryDir dir;
        TestApp app(dir.path());
        QVERIFY(app.launch());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key));
        QCOMPARE(app->showingSplash, !leaves);
        QCOMPARE(app->workingView->isVisible(), leaves);
        QCOMPARE(app->section, section);
        if (section == Section::home && leaves) {
            QCOMPARE(QApplication::focusWidget(), app->menuHeading);
            QVERIFY(app->menuHeading->isOn());
        }
    }

    void brandAndMenuKeys() {
        ShopOnDisk shop;
        Store named;
        named.locadoraName = "Vídeo Clube Estrela";
        QVERIFY(shop.launch(named));
        TestApp& app = shop.app;
        QCOMPARE(app->brand->text(), QStringLiteral("VÍDEO CLUBE ESTRELA"));
        QCOMPARE(app->status->text(), dateText(app->seams.clock()));

        // The program's menu keys win over the search field's own editing keys.
        app->enterProgram();
        app->focus(app->search);
        QTest::keyClick(app->search, Qt::Key_K, Qt::ControlModifier);
        QCOMPARE(app->section, Section::cash);

        // "Selecionar tudo" acts on the focused field.
        QTest::keyClicks(app->search, "fita");
        app->search->deselect();
        app->window->menuBar()->actions().at(1)->menu()->actions().at(3)->trigger();
        QCOMPARE(app->search->selectedText(), QStringLiteral("fita"));
    }

    void navigationMovesFocus() {
        ShopOnDisk shop;
        QVERIFY(shop.launch(Store{}));
        TestApp& app = shop.app;
        app->enterProgram();

        app->search->setText("tubarão");
        app->navigate(Section::cash);
        QVERIFY(app->search->text().isEmpty());
        QVERIFY(!app->menuHeading->isOn());
        QCOMPARE(QApplication::focusWidget(), app->search.data());

        shop.button("[F1] CADASTRAR FITA")->click();
        QCOMPARE(app->section, Section::films);
        // The suggestion and the exit are commands, not sections.
        DialogAnswerer suggestion(DialogAnswerer::pressKey(Qt::Key_Return));
        shop.button("[F7] SUGESTÃO DA CASA")->click();
        DialogAnswerer stay(DialogAnswerer::clickButton(1));
        app->footerButtons.last()->click();
        QVERIFY(suggestion.answered() && stay.answered());
        QCOMPARE(app.terminations, 0);
        QCOMPARE(app->section, Section::films);

        app->menuHeading->click();
        QCOMPARE(app->section, Section::home);
        QCOMPARE(app->window->focusWidget(), app->menuHeading);
    }

    void eachScreenStartsWithItsOwnWidgets() {
        QTemporaryDir dir;
        TestApp app(dir.path());
        QVERIFY(app.launch());
        app->enterProgram();

        app->navigate(Section::films);
        QVERIFY(app->screen.importButton != nullptr);
        app->navigate(Section::customers);
        QVERIFY(app->screen.importButton == nullptr);

        app->navigate(Section::reports);
        QVERIFY(app->screen.sortButton == nullptr);
        QVERIFY(app->screen.actionButtons.last()->width() >= 193); // "RELATÓRIO MATRICIAL" is not cut

        // The home screen is the splash drawn inside the body, without its button.
        app->navigate(Section::home);
        QCOMPARE(app->bodyViews().size(), 1);
        auto* home = qobject_cast<SplashView*>(app->bodyViews().first());
        QVERIFY(home != nullptr && !home->enterButton()->isVisible());
        QVERIFY(app->screen.actionButtons.isEmpty());
    }

    // The locked database is tried in the storage tests; here the shell's answer to any failure.
    void commitFailureKeepsTheStore() {
        QTemporaryDir dir;
        TestApp app(dir.path()); // not launched: no database
        DialogAnswerer answerer(DialogAnswerer::pressKey(Qt::Key_Return));
        QVERIFY(!app->commit(storeWithFilm()));
        QCOMPARE(answerer.seen().title, QStringLiteral("Não foi possível salvar"));
        QCOMPARE(answerer.seen().text, QStringLiteral("Banco local não iniciado."));
        QCOMPARE(app->store, Store{});
    }

    void invalidDatabaseStopsTheLaunch() {
        QTemporaryDir dir;
        QVERIFY(writeFile(dir.filePath("cinefita.sqlite"), QByteArray(4096, 'x')));
        TestApp app(dir.path());
        DialogAnswerer answerer(DialogAnswerer::clickButton(0));
        app->launch();

        QCOMPARE(answerer.seen().title, QStringLiteral("Dados indisponíveis"));
        QCOMPARE(app.terminations, 1);
        QVERIFY(app->window == nullptr);
    }

    void debtAlertBlinks() {
        const Instant now{800000000};
        ShopOnDisk shop(now);
        Store store = storeWithFilm();
        store.rentals.append(Rental{.id = "R1", .film = "F1", .customer = "C1", .due = now.plusSeconds(-2 * 86400)});
        QVERIFY(shop.launch(store));
        TestApp& app = shop.app;
        app->blinkTimer->stop();
        auto colour = [&app] {
            app->updateDebtAlert();
            return app->status->palette().color(QPalette::WindowText);
        };
        const QColor first = colour();
        QCOMPARE(app->status->text(), QStringLiteral("ATENÇÃO: CLIENTE EM DÉBITO"));
        QVERIFY(colour() != first);
        QCOMPARE(colour(), first);

        // Once the tape is back the line keeps its text in the ordinary colour.
        Store returned = app->store;
        returned.rentals[0].returned = now;
        QVERIFY(app->commit(returned));
        QCOMPARE(app->status->text(), QStringLiteral("SALVO NO BANCO LOCAL"));
        app->updateDebtAlert();
        QCOMPARE(app->status->palette().color(QPalette::WindowText), DOS::text());
    }
};

QTEST_MAIN(ShellTest)
#include "test_shell.moc"
