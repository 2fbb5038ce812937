#include "storage/LocalDatabase.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct PreviewRun {
    int exitCode = -1;
    QProcess::ExitStatus exitStatus = QProcess::CrashExit;
    QByteArray errors;
};

// Runs the built program with --preview as the operator would from a terminal
// without a display: no platform chosen, the data folder and temp folder given.
PreviewRun runPreview(const QTemporaryDir& dir, const QStringList& extraEnvironment) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name :
         {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "CINEFITA_PREVIEW_HOME", "CINEFITA_PREVIEW_PATH"})
        environment.remove(QString::fromLatin1(name));
    environment.insert("CINEFITA_DATA_DIR", dir.filePath("data"));
    environment.insert("TMPDIR", dir.filePath("tmp"));
    environment.insert("XDG_DATA_HOME", dir.filePath("user-data"));
    environment.insert("HOME", dir.filePath("home"));
    for (const QString& pair : extraEnvironment)
        environment.insert(pair.section('=', 0, 0), pair.section('=', 1));
    QDir(dir.path()).mkpath("tmp");

    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(CINEFITA_BINARY), {"--preview"});
    PreviewRun run;
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.exitCode = process.exitCode();
    run.exitStatus = process.exitStatus();
    run.errors = process.readAllStandardError();
    return run;
}

} // namespace

class PreviewTest : public QObject {
    Q_OBJECT

private slots:
    void picturesTheScreen_data();
    void picturesTheScreen();
};

void PreviewTest::picturesTheScreen_data() {
    QTest::addColumn<QByteArray>("legacy");
    QTest::addColumn<QStringList>("environment");
    QTest::addColumn<QString>("picture");
    QTest::newRow("home screen, empty folder, picture named")
        << QByteArray() << QStringList{"CINEFITA_PREVIEW_HOME=1", "CINEFITA_PREVIEW_PATH=@/home.png"} << "home.png";
    // Without a path the picture goes to the system's temporary folder.
    QTest::newRow("legacy data migrated first")
        << QByteArray(R"({"films":[{"id":"A","title":"ALIEN","genre":"Terror","copies":1,"price":400}],)"
                      R"("customers":[],"rentals":[],"entries":[]})")
        << QStringList{} << "tmp/CINEFITA-CRT.png";
}

void PreviewTest::picturesTheScreen() {
    QFETCH(QByteArray, legacy);
    QFETCH(QStringList, environment);
    QFETCH(QString, picture);
    QTemporaryDir dir;
    QDir(dir.path()).mkpath("data");
    if (!legacy.isEmpty()) {
        QFile file(dir.filePath("data/dados.json"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(legacy);
    }
    environment.replaceInStrings("@", dir.path());
    const PreviewRun run = runPreview(dir, environment);
    QVERIFY2(run.exitStatus == QProcess::NormalExit && run.exitCode == 0, run.errors.constData());
    QCOMPARE(QImage(dir.filePath(picture)).size(), QSize(1260, 850));
    // The operator's own data folder is left alone.
    QVERIFY(!QDir(dir.filePath("user-data")).exists("Rebobina"));

    const std::optional<Store> saved = LocalDatabase(dir.filePath("data/cinefita.sqlite")).load();
    QVERIFY(saved.has_value());
    QCOMPARE(saved->films.size(), legacy.isEmpty() ? 0 : 1);
}

QTEST_GUILESS_MAIN(PreviewTest)
#include "test_preview.moc"
