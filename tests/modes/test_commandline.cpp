#include "support/Files.h"
#include "support/ProgramRun.h"

#include <QtTest>

class TestCommandLine : public QObject {
    Q_OBJECT

private slots:
    void selfTest() {
        QTemporaryDir temporary;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TMPDIR"), temporary.path());
        environment.insert(QStringLiteral("CINEFITA_DATA_DIR"), temporary.filePath(QStringLiteral("dados")));

        const ProgramRun result = runProgram({QStringLiteral("--self-test")}, environment);
        QCOMPARE(result.err, QString());
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(
            result.out,
            QStringLiteral(
                "PASS: SQLite persistence, exact rental hours, per-copy stock, physical labels and membership cards\n"
                "PASS: CSV import BOM, delimiters, quoted multiline fields, prices and atomic duplicate rejection\n"
                "PASS: long multiline sinapse roundtrip and accent-insensitive genre filter\n"
                "PASS: Portuguese film/customer alphabetical and code ordering\n"
                "PASS: expanded records, dates, deletion guards and preserved history\n"
                "PASS: film code migration and search, DDD formatting,  legacy data migration, custom name "
                "persistence, currency validation, calendar overdue calculation, persistent data round trip\n"));
        // Its scratch folder is gone, and it never touched a data folder.
        QCOMPARE(QDir(temporary.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
                 QStringList{});
    }

    void printFixtures_data() {
        QTest::addColumn<QString>("folder");
        QTest::newRow("relative, new parents") << "saida/paginas";
        QTest::newRow("existing folder") << ".";
    }
    void printFixtures() {
        QFETCH(QString, folder);
        QTemporaryDir work;
        const ProgramRun result = runProgram({QStringLiteral("--print-fixtures"), folder},
                                             QProcessEnvironment::systemEnvironment(), work.path());
        QCOMPARE(result.err, QString());
        QCOMPARE(result.exitCode, 0);
        // The pages as a browser was seen to print them and read their barcodes.
        const QDir written(work.filePath(folder));
        const QDir golden(QStringLiteral(CINEFITA_SOURCE_DIR "/tests/print/pages"));
        QCOMPARE(written.entryList(QDir::Files | QDir::Hidden, QDir::Name), golden.entryList(QDir::Files, QDir::Name));
        for (const QString& page : golden.entryList(QDir::Files))
            QCOMPARE(fileText(written.filePath(page)), fileText(golden.filePath(page)));
    }

    void printFixturesFailure() {
        QTemporaryDir work;
        QVERIFY(writeFile(work.filePath(QStringLiteral("arquivo")), {}));
        const ProgramRun result = runProgram({QStringLiteral("--print-fixtures"), QStringLiteral("arquivo/paginas")},
                                             QProcessEnvironment::systemEnvironment(), work.path());
        QVERIFY(result.exitCode > 0);
        QVERIFY(result.err.contains("arquivo/paginas"));
        QCOMPARE(result.out, QString());
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "test_commandline.moc"
