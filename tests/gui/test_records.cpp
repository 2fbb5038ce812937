#include "gui/GuiSupport.h"

#include "app/RecordForm.h"
#include "look/DOSField.h"
#include "records/RentalRules.h"
#include "storage/LocalDatabase.h"

#include <QDir>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Films coded 3 and 7 (the 7 removed, copy 3 of it out), and customer 12 with that rental open.
Store shop() {
    Store store;
    store.films = {Film{.id = "F3", .title = "ALIEN", .genre = "Terror", .copies = 1, .price = 400, .code = 3},
                   Film{.id = "F7", .title = "TUBARÃO", .copies = 3, .price = 500, .code = 7, .deleted = true}};
    store.customers = {Customer{.id = "C12", .name = "JOÃO DA SILVA", .phone = "(11) 5555", .code = 12}};
    store.rentals = {Rental{.id = "R1",
                            .film = "F7",
                            .customer = "C12",
                            .start = Instant{700000000},
                            .due = Instant{900000000},
                            .price = 500,
                            .copy = 3}};
    return store;
}

QStringList titles(const QList<DOSButton*>& buttons) {
    QStringList texts;
    for (const DOSButton* button : buttons)
        texts.append(button->text());
    return texts;
}

} // namespace

class RecordsTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void openedForms_data();
    void openedForms();
    void refusals_data();
    void refusals();
    void savedTextsAreNormalised();
    void deleteIsGuardedThenRestored();

private:
    void open(int section, const std::optional<QString>& id);
    void set(const QString& key, const QString& text);
    SeenDialog saveAnswered();

    std::unique_ptr<QTemporaryDir> dir;
    std::unique_ptr<TestApp> app;
};

void RecordsTest::init() {
    dir = std::make_unique<QTemporaryDir>();
    app = std::make_unique<TestApp>(dir->path());
    QVERIFY(app->launch());
    (*app)->enterProgram();
    QVERIFY((*app)->commit(shop()));
}

void RecordsTest::cleanup() {
    app.reset();
}

void RecordsTest::open(int section, const std::optional<QString>& id) {
    (*app)->navigate(section);
    (*app)->editID = id;
    (*app)->recordScreen(id);
}

void RecordsTest::set(const QString& key, const QString& text) {
    if (DOSField* field = (*app)->screen.formView->fields().value(key))
        field->setText(text);
    else
        (*app)->screen.formView->longFields().value(key)->setPlainText(text);
}

// Presses the save button; a refusal is answered with Return and reported.
SeenDialog RecordsTest::saveAnswered() {
    DialogAnswerer answerer(DialogAnswerer::pressKey(Qt::Key_Return));
    (*app)->screen.actionButtons.last()->click();
    return answerer.seen();
}

void RecordsTest::openedForms_data() {
    QTest::addColumn<int>("section");
    QTest::addColumn<QString>("id");
    QTest::addColumn<QStringList>("actions");
    QTest::addColumn<int>("tabs");
    QTest::addColumn<QString>("code");
    QTest::newRow("new film: next after the removed 7")
        << int(Section::films) << "" << QStringList{"SALVAR"} << 0 << "COD-0008";
    QTest::newRow("opened film") << int(Section::films) << "F3"
                                 << QStringList{"ETIQUETAS", "EDITAR", "APAGAR", "SALVAR"} << 0 << "COD-0003";
    QTest::newRow("new customer") << int(Section::customers) << "" << QStringList{"FINALIZAR"} << 0 << "0013";
    QTest::newRow("opened customer") << int(Section::customers) << "C12" << QStringList{"EDITAR", "APAGAR", "FINALIZAR"}
                                     << 1 << "0012";
}

void RecordsTest::openedForms() {
    QFETCH(int, section);
    QFETCH(QString, id);
    QFETCH(QStringList, actions);
    QFETCH(int, tabs);
    QFETCH(QString, code);
    open(section, id.isEmpty() ? std::nullopt : std::optional(id));
    QCOMPARE(titles((*app)->screen.actionButtons), actions);
    QCOMPARE((*app)->screen.tabs.size(), tabs);
    DOSField* name = (*app)->screen.formView->fields().value("name");
    QCOMPARE((*app)->screen.formView->value("code"), code);
    QCOMPARE(QApplication::focusWidget(), name);
    // Opened records are read until EDITAR; a film's code is never typed.
    QCOMPARE(name->isReadOnly(), !id.isEmpty());
    if (!id.isEmpty())
        (*app)->screen.actionButtons.at(actions.indexOf("EDITAR"))->click();
    QVERIFY(!name->isReadOnly());
    QCOMPARE((*app)->screen.formView->fields().value("code")->isReadOnly(), section == Section::films);
}

void RecordsTest::refusals_data() {
    QTest::addColumn<int>("section");
    QTest::addColumn<QString>("id");
    QTest::addColumn<QStringList>("edits"); // key=text
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    const int films = Section::films, customers = Section::customers;
    const QString incomplete = "Informe um código numérico positivo e o nome.";
    const QString invalid = "Código já usado, quantidade inválida ou preço inválido.";
    QTest::newRow("code 0") << films << "" << QStringList{"name=X", "code=0"} << "Cadastro incompleto" << incomplete;
    QTest::newRow("code 1000000") << customers << "" << QStringList{"name=X", "code=1000000"} << "Cadastro incompleto"
                                  << incomplete;
    QTest::newRow("no name") << films << "" << QStringList{} << "Cadastro incompleto" << incomplete;
    QTest::newRow("code of a removed film")
        << films << "" << QStringList{"name=X", "code=COD-0007"} << "Dados inválidos" << invalid;
    QTest::newRow("copies 2,5") << films << "" << QStringList{"name=X", "copies=2,5"} << "Dados inválidos" << invalid;
    QTest::newRow("copies 100001") << films << "" << QStringList{"name=X", "copies=100001"} << "Dados inválidos"
                                   << invalid;
    QTest::newRow("price") << films << "" << QStringList{"name=X", "price=1.001"} << "Dados inválidos" << invalid;
    QTest::newRow("year 2101") << films << "" << QStringList{"name=X", "year=2101"} << "Ano inválido"
                               << "Informe um ano de 1888 a 2100, ou deixe vazio.";
    QTest::newRow("category") << films << "" << QStringList{"name=X", "release=estreia"} << "Categoria inválida"
                              << "Use ACERVO ou LANÇAMENTO.";
    QTest::newRow("copy 3 out, one tape out") << films << "F7" << QStringList{"copies=2"} << "Quantidade insuficiente"
                                              << "Há mais exemplares locados que a quantidade informada.";
    QTest::newRow("customer code taken") << customers << "" << QStringList{"name=X", "code=0012"} << "Código já usado"
                                         << "Escolha outro código de cliente.";
    QTest::newRow("state") << customers << "" << QStringList{"name=X", "state=São"} << "Estado inválido"
                           << "Use a sigla de duas letras do estado.";
    QTest::newRow("CEP") << customers << "" << QStringList{"name=X", "zip=1234"} << "CEP inválido"
                         << "Informe os oito números do CEP, ou deixe vazio.";
}

void RecordsTest::refusals() {
    QFETCH(int, section);
    QFETCH(QString, id);
    QFETCH(QStringList, edits);
    QFETCH(QString, title);
    QFETCH(QString, text);
    open(section, id.isEmpty() ? std::nullopt : std::optional(id));
    (*app)->enableEdit();
    for (const QString& edit : edits)
        set(edit.section('=', 0, 0), edit.section('=', 1));
    const SeenDialog seen = saveAnswered();
    QCOMPARE(seen.title, title);
    QCOMPARE(seen.text, text);
    QCOMPARE((*app)->store, shop());
    QVERIFY((*app)->screen.formView != nullptr); // the form keeps what was typed
}

void RecordsTest::savedTextsAreNormalised() {
    open(Section::films, std::nullopt);
    set("name", "TUBARÃO 2");
    set("genre", "acao, Drama,  ACAO ,Cult");
    set("release", " Lancamento ");
    set("year", "1888");
    set("copies", "100000");
    QCOMPARE(saveAnswered().title, QString());
    const Film film = (*app)->store.films.last();
    QCOMPARE(film.genre, QStringLiteral("Ação, Drama, Cult"));
    QCOMPARE(film.code, std::optional<qint64>(8));
    QVERIFY(film.release.value_or(false));

    open(Section::customers, std::nullopt);
    DOSField* phone = (*app)->screen.formView->fields().value("phone");
    phone->setFocus();
    QTest::keyClicks(phone, "11 9876-54321");
    QCOMPARE(phone->text(), QStringLiteral("(11) 987654321"));
    set("name", "MARIA");
    set("state", "sp");
    set("zip", "01310-100");
    QCOMPARE(saveAnswered().title, QString());
    const Customer saved = LocalDatabase(QDir(dir->path()).filePath("cinefita.sqlite")).load()->customers.last();
    QCOMPARE(saved.state, QStringLiteral("SP"));
    QCOMPARE(saved.zip, QStringLiteral("01310100"));
    QCOMPARE(saved.phone, QStringLiteral("(11) 987654321"));
    QCOMPARE(saved.code, std::optional<qint64>(13));
    QVERIFY((*app)->screen.formView == nullptr); // back on the list
}

void RecordsTest::deleteIsGuardedThenRestored() {
    open(Section::customers, "C12");
    const auto remove = [this] {
        DialogAnswerer answerer(DialogAnswerer::pressKey(Qt::Key_Return));
        (*app)->screen.actionButtons.at(1)->click();
        return answerer.seen().title;
    };
    QCOMPARE(remove(), QStringLiteral("Cadastro em uso"));
    QVERIFY((*app)->commit(returnedStore((*app)->store, "R1", true, Instant{800000000})));
    QCOMPARE(remove(), QStringLiteral("Apagar cadastro?"));
    QVERIFY((*app)->store.customers.first().deleted.value_or(false));
    QVERIFY(!(*app)->editID);

    const auto restore = [this](const QString& kind, const QString& code) {
        std::unique_ptr<DialogAnswerer> notFound;
        DialogAnswerer answerer([&](StyledDialog*) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(QApplication::focusWidget(), kind);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QTest::keyClicks(QApplication::focusWidget(), code);
            notFound = std::make_unique<DialogAnswerer>(DialogAnswerer::pressKey(Qt::Key_Return));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        });
        (*app)->restoreRecord();
        return notFound != nullptr ? notFound->seen().title : QStringLiteral("no form");
    };
    QCOMPARE(restore("FILME", "12"), QStringLiteral("Não encontrado"));
    QCOMPARE(restore("cliente", "COD-0012"), QStringLiteral("Não encontrado"));
    QCOMPARE(restore("cliente", "0012"), QString());
    QVERIFY(!(*app)->store.customers.first().deleted.value_or(false));
}

QTEST_MAIN(RecordsTest)
#include "test_records.moc"
