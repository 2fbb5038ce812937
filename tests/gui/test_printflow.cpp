#include "gui/GuiSupport.h"

#include "look/DOSField.h"
#include "look/DOSSearchField.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

namespace {

Store shop(bool customerRemoved) {
    Store store;
    store.locadoraName = "VÍDEO <&> CIA";
    store.films = {Film{.id = "F1", .title = "ALIEN", .genre = "Terror", .copies = 3, .price = 400, .code = 1}};
    store.customers = {
        Customer{.id = "C12", .name = "ANA", .phone = "(11) 5555", .code = 12, .deleted = customerRemoved}};
    return store;
}

QString readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class PrintFlowTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void labelSize_data();
    void labelSize();
    void cardOnlyForAnActiveCustomer_data();
    void cardOnlyForAnActiveCustomer();
    void failingWritesLeaveNoFile_data();
    void failingWritesLeaveNoFile();
    void importIsAllOrNothing();

private:
    void open(int section, const QString& id);

    std::unique_ptr<QTemporaryDir> dir;
    std::unique_ptr<TestApp> app;
    QStringList opened;
};

void PrintFlowTest::init() {
    dir = std::make_unique<QTemporaryDir>();
    app = std::make_unique<TestApp>(dir->path());
    opened.clear();
    (*app)->openPrintPage = [this](const QString& path) {
        opened.append(path);
    };
    QVERIFY(app->launch());
    (*app)->enterProgram();
}

void PrintFlowTest::cleanup() {
    app.reset();
}

void PrintFlowTest::open(int section, const QString& id) {
    (*app)->navigate(section);
    (*app)->editID = id;
    (*app)->recordScreen(id);
}

void PrintFlowTest::labelSize_data() {
    QTest::addColumn<QString>("width");
    QTest::addColumn<QString>("height");
    QTest::addColumn<QString>("heading"); // empty: nothing printed
    QTest::newRow("72,5 × 20") << "72,5"
                               << "20"
                               << "ETIQUETAS VHS — 72.5 × 20.0 mm";
    QTest::newRow("as proposed") << ""
                                 << ""
                                 << "ETIQUETAS VHS — 70.0 × 18.0 mm";
    QTest::newRow("narrower than the barcode") << "69"
                                               << "18"
                                               << "";
    QTest::newRow("height 17") << "70"
                               << "17"
                               << "";
    QTest::newRow("height 51") << "70"
                               << "51"
                               << "";
}

void PrintFlowTest::labelSize() {
    QFETCH(QString, width);
    QFETCH(QString, height);
    QFETCH(QString, heading);
    QVERIFY((*app)->commit(shop(false)));
    open(Section::films, "F1");
    QStringList proposed;
    DialogAnswerer answerer([&](StyledDialog* dialog) {
        for (DOSField* field : dialog->findChildren<DOSField*>())
            proposed.append(field->text());
        if (!width.isEmpty()) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(QApplication::focusWidget(), width);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(QApplication::focusWidget(), height);
        }
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    });
    (*app)->screen.actionButtons.first()->click(); // ETIQUETAS
    QCOMPARE(answerer.seen().title, QStringLiteral("TAMANHO DA ETIQUETA (mm)"));
    QCOMPARE(answerer.seen().buttons.first(), QStringLiteral("IMPRIMIR"));
    QCOMPARE(proposed, QStringList({"70", "18"}));
    const QString page = QDir(dir->path()).filePath("Impressos/Etiquetas-VHS.html");
    QCOMPARE(opened, heading.isEmpty() ? QStringList{} : QStringList{page});
    const QString html = readAll(page);
    QVERIFY(html.contains(heading));
    QCOMPARE(html.count("COD-0001-00"), heading.isEmpty() ? 0 : 3); // one label per copy
}

void PrintFlowTest::cardOnlyForAnActiveCustomer_data() {
    QTest::addColumn<bool>("removed");
    QTest::newRow("active: printed") << false;
    QTest::newRow("removed: refused") << true;
}

void PrintFlowTest::cardOnlyForAnActiveCustomer() {
    QFETCH(bool, removed);
    QVERIFY((*app)->commit(shop(removed)));
    open(Section::customers, "C12");
    DialogAnswerer answerer(DialogAnswerer::pressKey(Qt::Key_Return));
    (*app)->screen.tabs.first()->click(); // IMPRIMIR CARTEIRINHA
    const QString page = QDir(dir->path()).filePath("Impressos/Carteirinha-0012.html");
    QCOMPARE(opened, removed ? QStringList{} : QStringList{page});
    QCOMPARE(answerer.seen().title, removed ? QStringLiteral("Carteirinha") : QString());
    if (!removed)
        QVERIFY(readAll(page).contains("ANA"));
}

void PrintFlowTest::failingWritesLeaveNoFile_data() {
    QTest::addColumn<bool>("printing");
    QTest::newRow("card: print folder is a file") << true;
    QTest::newRow("backup: target is a folder") << false;
}

void PrintFlowTest::failingWritesLeaveNoFile() {
    QFETCH(bool, printing);
    QVERIFY((*app)->commit(shop(false)));
    QDir folder(dir->path());
    QString blocked;
    if (printing) {
        QFile blocker(folder.filePath("Impressos"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocked = blocker.fileName();
        open(Section::customers, "C12");
    } else {
        QVERIFY(folder.mkdir("saida") && folder.mkdir("saida/CINEFITA-backup.json"));
        blocked = folder.filePath("saida/CINEFITA-backup.json");
        (*app)->chooseSaveFile = [&blocked](const QString&, const QString& proposed, const QString&) {
            return proposed == QStringLiteral("CINEFITA-backup.json") ? blocked : QString();
        };
    }
    const QString status = (*app)->status->text();
    const QStringList before = QDir(QFileInfo(blocked).path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries);
    DialogAnswerer answerer(DialogAnswerer::pressKey(Qt::Key_Return));
    if (printing)
        (*app)->printMembers();
    else
        (*app)->backup();
    QCOMPARE(answerer.seen().title,
             printing ? QStringLiteral("Falha na impressão") : QStringLiteral("Falha na exportação"));
    QVERIFY(!answerer.seen().text.isEmpty());
    QCOMPARE(QDir(QFileInfo(blocked).path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), before);
    QVERIFY(opened.isEmpty());
    QCOMPARE((*app)->status->text(), status);
}

void PrintFlowTest::importIsAllOrNothing() {
    QVERIFY((*app)->commit(shop(false)));
    QFile csvFile(QDir(dir->path()).filePath("filmes.csv"));
    QVERIFY(csvFile.open(QIODevice::WriteOnly));
    csvFile.write("FILME;GÊNERO;CÓDIGO\nE.T.;Drama;5\nALIENS;;\n");
    csvFile.close();
    (*app)->chooseOpenFile = [&csvFile](const QString& caption, const QString&) {
        return caption == QStringLiteral("IMPORTAR CSV DE FILMES") ? csvFile.fileName() : QString();
    };
    (*app)->navigate(Section::films);
    (*app)->selectedGenre = "Terror";
    (*app)->search->setText("ALIEN");
    const auto import = [this] {
        DialogAnswerer answerer(DialogAnswerer::pressKey(Qt::Key_Return));
        (*app)->importFilmCSV();
        return QStringList{answerer.seen().title, answerer.seen().text};
    };
    QCOMPARE(import(), QStringList({"Importação concluída", "2 filme(s) cadastrado(s)."}));
    QCOMPARE((*app)->store.films.size(), 3);
    QCOMPARE((*app)->selectedGenre, std::nullopt);
    QCOMPARE((*app)->search->text(), QString());

    // Again: code 5 is taken now, and nothing of the file comes in.
    const Store before = (*app)->store;
    (*app)->selectedGenre = "Drama";
    QCOMPARE(import().first(), QStringLiteral("CSV não importado"));
    QCOMPARE((*app)->store, before);
    QCOMPARE((*app)->selectedGenre, std::optional<QString>("Drama"));
}

QTEST_MAIN(PrintFlowTest)
#include "test_printflow.moc"
