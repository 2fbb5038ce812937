#include "storage/LocalDatabase.h"
#include "support/ProgramRun.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

class PreviewTest : public QObject {
    Q_OBJECT

private slots:
    // As the operator would run it from a terminal without a display: no
    // platform chosen, the data folder and temp folder given.
    void picturesTheWindowWithoutADisplay() {
        QTemporaryDir dir;
        const QString picture = dir.filePath("preview.png");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "CINEFITA_PREVIEW_HOME"})
            environment.remove(name);
        environment.insert("CINEFITA_DATA_DIR", dir.filePath("data"));
        environment.insert("TMPDIR", dir.filePath("tmp"));
        environment.insert("XDG_DATA_HOME", dir.filePath("user-data"));
        environment.insert("HOME", dir.filePath("home"));
        environment.insert("CINEFITA_PREVIEW_PATH", picture);
        QVERIFY(QDir(dir.path()).mkpath("tmp"));

        const ProgramRun result = runProgram({"--preview"}, environment);
        QVERIFY2(result.exitCode == 0, qPrintable(result.err));
        QCOMPARE(QImage(picture).size(), QSize(1260, 850));
        QVERIFY(LocalDatabase(dir.filePath("data/cinefita.sqlite")).load().has_value());
        // The operator's own data folder is left alone.
        QVERIFY(!QDir(dir.filePath("user-data")).exists("Rebobina"));
    }
};

QTEST_GUILESS_MAIN(PreviewTest)
#include "test_preview.moc"
