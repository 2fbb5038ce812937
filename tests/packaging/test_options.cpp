#include "support/ProgramRun.h"

#include <QtTest>

namespace {

// A platform that does not exist makes any application object abort, so a clean
// exit proves no window could have been opened; the data folder must stay absent.
ProgramRun runWithoutWindow(const QStringList& arguments, const QString& dataFolder) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("no-such-platform"));
    environment.insert(QStringLiteral("CINEFITA_DATA_DIR"), dataFolder);
    return runProgram(arguments, environment);
}

const QString versionLine = QStringLiteral("CINEFITA 3.0\n");

} // namespace

class TestOptions : public QObject {
    Q_OBJECT

private slots:
    // Which mode answers: the fixed order of recognition, not the order typed.
    void chosenMode_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("outputStart");
        QTest::newRow("version") << QStringList{"--version"} << versionLine;
        QTest::newRow("help") << QStringList{"--help"} << QStringLiteral("Uso: cinefita");
        QTest::newRow("version before help") << QStringList{"--help", "--version"} << versionLine;
        QTest::newRow("self-test before help")
            << QStringList{"--help", "--self-test"} << QStringLiteral("PASS: SQLite persistence");
        QTest::newRow("partial word is no option")
            << QStringList{"--versions", "--help"} << QStringLiteral("Uso: cinefita");
    }
    void chosenMode() {
        QFETCH(QStringList, arguments);
        QFETCH(QString, outputStart);
        QTemporaryDir scratch;
        const QString dataFolder = scratch.filePath(QStringLiteral("dados"));
        const ProgramRun result = runWithoutWindow(arguments, dataFolder);
        QCOMPARE(result.err, QString());
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(result.out.startsWith(outputStart), qPrintable(result.out));
        QVERIFY(!QFileInfo::exists(dataFolder));
        if (outputStart == versionLine)
            QCOMPARE(result.out, versionLine);
    }
};

QTEST_GUILESS_MAIN(TestOptions)
#include "test_options.moc"
