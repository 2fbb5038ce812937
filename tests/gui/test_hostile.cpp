#include "gui/GuiSupport.h"

// Whatever an operator can type or paste into a screen is either refused as that
// screen describes or stored and shown exactly as typed: nothing trimmed inside,
// nothing escaped twice, no crash.

namespace {

const QStringList targets = {"film", "customer", "rental", "cash", "shop name"};
const QHash<QString, int> formSections = {
    {"film", Section::films}, {"customer", Section::customers}, {"rental", Section::rental}};
const QHash<QString, QString> storedBefore = {{"film", "TUBARÃO"}, {"customer", "ANA"}}; // the last of each

struct Hostile {
    const char* name;
    QString text;
    bool fitsShopName; // at most 60 visible characters, not empty
};
const Hostile texts[] = {
    {"empty", "", false},
    {"10 000 characters", QString(10000, u'ç'), false},
    {"control characters", QString("A\u0001B\tC\u007fD") + QChar(0) + "E\u001b[2J", true},
    {"right to left and combining", "שלום e\u0301 مرحبا \u202eabc", true},
    {"markup and quotes", "<script>alert('x')</script> & \"aspas\" 'apóstrofo'", true},
    {"sixty, an accent typed apart", QString(59, u'A') + "E\u0301", true},
    {"sixty-one", QString(59, u'A') + "E\u0301B", false},
};

Store shop() {
    Store store;
    store.films = {Film{.id = "F1", .title = "ALIEN", .copies = 1, .price = 400, .code = 1},
                   Film{.id = "F2", .title = "TUBARÃO", .copies = 1, .price = 500, .code = 2}};
    store.customers = {Customer{.id = "C1", .name = "ANA", .code = 1}};
    return store;
}

} // namespace

class HostileTest : public QObject {
    Q_OBJECT

private slots:
    void inputIsRefusedOrKeptIntact_data() {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("fitsShopName");
        for (const QString& target : targets)
            for (const Hostile& hostile : texts)
                QTest::newRow(qPrintable(target + ", " + hostile.name))
                    << target << hostile.text << hostile.fitsShopName;
    }

    void inputIsRefusedOrKeptIntact() {
        QFETCH(QString, target);
        QFETCH(QString, text);
        QFETCH(bool, fitsShopName);
        ShopOnDisk disk;
        QVERIFY(disk.launch(shop()));
        TestApp& app = disk.app;
        app->enterProgram();
        const bool refused = text.isEmpty() || target == "rental" || (target == "shop name" && !fitsShopName);
        QString stored;

        if (formSections.contains(target)) {
            app->navigate(formSections.value(target));
            if (target != "rental")
                app->recordScreen(std::nullopt);
            DOSField* field = disk.field(target == "rental" ? "film" : "name");
            field->setText(text);
            app->controlTextDidChange(field);
            DialogAnswerer refusal(DialogAnswerer::pressKey(Qt::Key_Return));
            app->screen.actionButtons.last()->click(); // SALVAR / FINALIZAR
            const QString expected = target == "rental" ? "Selecione filme e cliente" : "Cadastro incompleto";
            QCOMPARE(refusal.seen().title, refused ? expected : QString());
            stored = target == "film"       ? disk.saved().films.last().title
                     : target == "customer" ? disk.saved().customers.last().name
                                            : QString();
            if (!refused) // the saved record opened again
                app->recordScreen(target == "film" ? app->store.films.last().id : app->store.customers.last().id);
            // A refused form keeps what was typed.
            QCOMPARE(disk.field(target == "rental" ? "film" : "name")->text(), text);
        } else {
            const bool cash = target == "cash";
            DialogAnswerer answerer([&](StyledDialog* dialog) {
                const QList<DOSField*> fields = dialog->accessory()->findChildren<DOSField*>();
                fields[0]->setText(text);
                if (cash)
                    fields[2]->setText("5,00");
                dialog->buttons().first()->click();
            });
            cash ? app->cashEntry() : app->configureName();
            QVERIFY(answerer.answered());
            const Store now = disk.saved();
            stored = cash ? (now.entries.isEmpty() ? QString() : now.entries.last().description)
                          : now.locadoraName.value_or(QString());
            if (!cash && !refused)
                QCOMPARE(app->window->windowTitle(), "CINEFITA — " + text);
        }
        if (target != "rental")
            QCOMPARE(stored, refused ? storedBefore.value(target) : text);
        QCOMPARE(disk.saved(), app->store); // what is shown is what the database holds
    }
};

QTEST_MAIN(HostileTest)
#include "test_hostile.moc"
