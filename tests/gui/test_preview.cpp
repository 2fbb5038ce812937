#include "storage/LocalDatabase.h"

#include <QDir>
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
    void picturesTheWindowWithoutADisplay();
};

void PreviewTest::picturesTheWindowWithoutADisplay() {
    QTemporaryDir dir;
    const QString picture = dir.filePath("preview.png");
    const PreviewRun run = runPreview(dir, {"CINEFITA_PREVIEW_PATH=" + picture});
    QVERIFY2(run.exitStatus == QProcess::NormalExit && run.exitCode == 0, run.errors.constData());
    QCOMPARE(QImage(picture).size(), QSize(1260, 850));
    QVERIFY(LocalDatabase(dir.filePath("data/cinefita.sqlite")).load().has_value());
    // The operator's own data folder is left alone.
    QVERIFY(!QDir(dir.filePath("user-data")).exists("Rebobina"));
}

QTEST_GUILESS_MAIN(PreviewTest)
#include "test_preview.moc"
