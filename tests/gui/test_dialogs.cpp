#include "gui/GuiSupport.h"

#include "widgets/FocusRing.h"

#include <QClipboard>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

class DialogsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        dir = std::make_unique<QTemporaryDir>();
        app = std::make_unique<TestApp>(dir->path());
    }

    void textBoxIsBounded_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("height");
        const QString row48(48, QLatin1Char('a'));
        const QString row49(49, QLatin1Char('a'));
        QTest::newRow("one line: the minimum") << "Use as setas." << 70;
        QTest::newRow("three full rows") << QStringList{row48, row48, row48}.join('\n') << 3 * 25 + 12;
        QTest::newRow("49 characters take two rows") << QStringList{row49, row49, row49}.join('\n') << 6 * 25 + 12;
        QTest::newRow("empty lines count one row") << QStringLiteral("a\n\n\n\n") << 5 * 25 + 12;
        QTest::newRow("eleven rows: the maximum") << QStringList(11, "linha").join('\n') << 280;
    }

    void textBoxIsBounded() {
        QFETCH(QString, text);
        QFETCH(int, height);
        ModalAlert alert{.title = "T", .text = text};
        (*app)->prepareModalText(alert);
        QVERIFY(alert.text.isEmpty());
        QWidget* container = alert.accessory.get();
        auto* box = container->findChild<WrappingSynopsisView*>();
        QVERIFY(box != nullptr);
        QCOMPARE(box->toPlainText(), text);
        QCOMPARE(box->geometry(), QRect(0, 0, 500, height));
        QCOMPARE(container->size(), QSize(500, height));
    }

    void textBoxSitsAboveTheAccessory() {
        auto* fields = new QWidget;
        fields->setFixedSize(420, 120);
        ModalAlert alert{.title = "T", .text = "Confira.", .accessory = std::unique_ptr<QWidget>(fields)};
        (*app)->prepareModalText(alert);
        QCOMPARE(fields->parentWidget(), alert.accessory.get());
        QCOMPARE(fields->geometry(), QRect(0, 70 + 12, 420, 120));
        QCOMPARE(alert.accessory->size(), QSize(500, 70 + 12 + 120));
    }

    void keysAnswer_data() {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("buttons");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("answer");
        const QStringList rewind{"[S] SIM", "[N] NÃO", "CANCELAR"};
        const QString rewindTitle = "FITA FOI REBOBINADA? [S/N]";
        QTest::newRow("Escape: second of two")
            << "TUBARÃO" << QStringList{"DEVOLUÇÃO", "VOLTAR"} << int(Qt::Key_Escape) << 1001;
        QTest::newRow("Escape: one button aborts") << "Aviso" << QStringList{} << int(Qt::Key_Escape) << -1001;
        QTest::newRow("Escape: rewind aborts") << rewindTitle << rewind << int(Qt::Key_Escape) << -1001;
        QTest::newRow("S: rewound") << rewindTitle << rewind << int(Qt::Key_S) << 1000;
        QTest::newRow("N: not rewound") << rewindTitle << rewind << int(Qt::Key_N) << 1001;
        QTest::newRow("S elsewhere is no answer")
            << "SAIR DO CINEFITA?" << QStringList{"SAIR", "VOLTAR"} << int(Qt::Key_S) << 0;
        QTest::newRow("Return: the first button")
            << "Apagar cadastro?" << QStringList{"APAGAR", "CANCELAR"} << int(Qt::Key_Return) << 1000;
    }

    void keysAnswer() {
        QFETCH(QString, title);
        QFETCH(QStringList, buttons);
        QFETCH(int, key);
        QFETCH(int, answer);
        DialogAnswerer answerer([key, answer](StyledDialog* dialog) {
            DialogAnswerer::pressKey(Qt::Key(key))(dialog);
            if (answer == 0) { // still open: leave it with its second button
                QVERIFY(dialog->isVisible());
                dialog->buttons().at(1)->click();
            }
        });
        const int got =
            (*app)->styledModal(ModalAlert{.title = title, .text = "Multa por atraso: R$ 0,00", .buttons = buttons});
        QVERIFY(answerer.answered());
        QCOMPARE(got, answer == 0 ? 1001 : answer);
    }

    void closingTheDialogAborts() {
        DialogAnswerer answerer([](StyledDialog* dialog) { QVERIFY(!dialog->close()); });
        QCOMPARE((*app)->styledModal(ModalAlert{.title = "SAIR DO CINEFITA?", .buttons = {"SAIR", "VOLTAR"}}), -1001);
    }

    void formReturnsTrimmedTexts() {
        DialogAnswerer answerer([](StyledDialog* dialog) {
            auto* first = qobject_cast<QLineEdit*>(dialog->ring().at(0));
            QCOMPARE(QApplication::focusWidget(), first);
            QTest::keyClicks(first, "  Troco  ");
            QTest::keyClick(first, Qt::Key_Return);
        });
        const auto answers = (*app)->form("Caixa", {{"DESCRIÇÃO", ""}, {"VALOR (R$)", " 10,00 "}});
        QCOMPARE(answerer.seen().buttons, QStringList({"FINALIZAR", "CANCELAR"}));
        QCOMPARE(answers, std::make_optional(QStringList{"Troco", "10,00"}));
    }

    void ringKeys_data() {
        QTest::addColumn<int>("focused"); // 0 field, 1 and 2 buttons, 3 read-only text
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<bool>("used");
        QTest::addColumn<int>("focusedAfter");
        const int control = Qt::ControlModifier;
        QTest::newRow("Tab wraps to the first") << 2 << int(Qt::Key_Tab) << 0 << true << 0;
        QTest::newRow("Space in a field types") << 0 << int(Qt::Key_Space) << 0 << false << 0;
        QTest::newRow("Ctrl-Tab is no ring key") << 0 << int(Qt::Key_Tab) << control << false << 0;
        QTest::newRow("Ctrl-V on read-only text is used") << 3 << int(Qt::Key_V) << control << true << 3;
        QTest::newRow("Ctrl-Meta-V is no clipboard key")
            << 0 << int(Qt::Key_V) << (control | int(Qt::MetaModifier)) << false << 0;
    }

    void ringKeys() {
        QFETCH(int, focused);
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(bool, used);
        QFETCH(int, focusedAfter);
        QWidget window;
        auto* layout = new QHBoxLayout(&window);
        auto* readOnly = new QPlainTextEdit("sinopse fixa");
        readOnly->setReadOnly(true);
        const QList<QWidget*> widgets{new DOSField("fita"), new DOSButton("UM"), new DOSButton("DOIS"), readOnly};
        for (QWidget* widget : widgets)
            layout->addWidget(widget);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QApplication::clipboard()->setText("colado");
        FocusRing::focus(widgets[focused]);

        QKeyEvent press(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers));
        QCOMPARE(FocusRing::handleKeyboard(&press, widgets.mid(0, 3), &window), used);
        QCOMPARE(QApplication::focusWidget(), widgets[focusedAfter]);
        if (used && focusedAfter == 0) // reached by the ring: typing replaces the whole text
            QCOMPARE(qobject_cast<QLineEdit*>(widgets[0])->selectedText(), QStringLiteral("fita"));
        QCOMPARE(readOnly->toPlainText(), QStringLiteral("sinopse fixa"));
    }

private:
    std::unique_ptr<QTemporaryDir> dir;
    std::unique_ptr<TestApp> app;
};

QTEST_MAIN(DialogsTest)
#include "test_dialogs.moc"
