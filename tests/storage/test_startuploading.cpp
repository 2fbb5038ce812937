#include "records/StoreJSON.h"
#include "storage/StartupLoading.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/RawDatabase.h"

#include <QtTest>

namespace {

// A film and a customer without codes and five rentals, as versions before codes wrote them.
QByteArray legacyDocument() {
    QByteArray rentals;
    for (int i = 1; i <= 5; ++i)
        rentals += QByteArray(i > 1 ? "," : "") + R"({"id":"r)" + QByteArray::number(i) +
                   R"(","film":"a","customer":"c","start":10.5,"due":20,"price":300,"finePerDay":100})";
    return R"({ "films": [{"id":"a","title":"Alien","genre":"Terror","copies":2,"price":300}],)"
           R"( "customers": [{"id":"c","name":"Ana","phone":"(11) 987654321"}],)"
           R"( "rentals": [)" +
           rentals + R"(], "entries": [] })" + "\n";
}

} // namespace

class TestStartupLoading : public QObject {
    Q_OBJECT

private slots:
    void dataFolderFromEnvironment() {
        qputenv("CINEFITA_DATA_DIR", "relativa/dados");
        QCOMPARE(dataFolderPath(), QDir::current().absoluteFilePath(QStringLiteral("relativa/dados")));
        qputenv("CINEFITA_DATA_DIR", "/var/tmp/cinefita");
        QCOMPARE(dataFolderPath(), QStringLiteral("/var/tmp/cinefita"));
        qunsetenv("CINEFITA_DATA_DIR");
        QCOMPARE(dataFolderPath(),
                 QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Rebobina"));
    }

    void newFolder() {
        QTemporaryDir root;
        const QString folder = root.filePath(QStringLiteral("a/b/dados"));
        const LoadedStore loaded = loadAtStartup(folder);
        QVERIFY(loaded.database);
        Store expected;
        expected.reportRentalBaseline = 0;
        QCOMPARE(loaded.store, expected);
        RawDatabase database(QDir(folder).filePath(QStringLiteral("cinefita.sqlite")));
        QCOMPARE(database.payload("state"), encodeStore(expected));
        QCOMPARE(database.payload("previous_state"), std::nullopt);
    }

    void migratesLegacyFileOnce() {
        QTemporaryDir folder;
        const QByteArray legacy = "\xEF\xBB\xBF" + legacyDocument(); // as a text editor saves it
        QVERIFY(writeFile(folder.filePath(QStringLiteral("dados.json")), legacy));
        QVERIFY(writeFile(folder.filePath(QStringLiteral("dados-antes-3.0.json")), "old copy"));

        // Codes, and the database read at the next start, are the self-test's.
        const LoadedStore first = loadAtStartup(folder.path());
        QCOMPARE(first.store.rentals.size(), 5);
        QCOMPARE(first.store.reportRentalBaseline, 5);
        QCOMPARE(first.database->load(), first.store);
        QCOMPARE(fileBytes(folder.filePath(QStringLiteral("dados-antes-3.0.json"))), legacy);
        QCOMPARE(fileBytes(folder.filePath(QStringLiteral("dados.json"))), legacy);
    }

    void keepsBaselineAndCodes() {
        QTemporaryDir folder;
        Store store;
        store.reportRentalBaseline = 2;
        store.films.append(Film{QStringLiteral("f"), QStringLiteral("Alien"), QStringLiteral("Terror"), 1, 300, 42});
        QVERIFY(writeFile(folder.filePath(QStringLiteral("dados.json")), encodeStore(store)));
        QCOMPARE(loadAtStartup(folder.path()).store, store);
    }

    // Every failure stops start-up with its reason and writes nothing.
    void failures_data() {
        QTest::addColumn<QString>("folder");     // the data folder, inside a scratch root
        QTest::addColumn<QString>("blocker");    // made first: a file, or a folder when it ends in "/"
        QTest::addColumn<QByteArray>("payload"); // stored by a first launch; null: no launch
        QTest::addColumn<QByteArray>("legacy");  // "dados.json"; null: none
        QTest::addColumn<QString>("message");    // part of the alert's text
        const auto row = [](const char* name, const char* folder, const char* blocker, const QByteArray& payload,
                            const QByteArray& legacy, const QString& message) {
            QTest::newRow(name) << QString(folder) << QString(blocker) << payload << legacy << message;
        };
        const QByteArray smallest = R"({"films":[],"customers":[],"rentals":[],"entries":[]})";
        const QByteArray afterNul = smallest + QByteArray("\0garbage", 8);
        const QByteArray none;
        row("legacy file not a store", "d", "", none, R"({"films":[],"customers":[],"rentals":[]})", "entries");
        row("legacy file with text after a NUL", "d", "", none, afterNul, "JSON");
        row("stored payload not JSON", "d", "", "{broken", smallest, "JSON");
        row("stored payload with text after a NUL", "d", "", afterNul, smallest, "JSON");
        row("folder cannot be created", "arquivo/d", "arquivo", none, none, "arquivo/d");
        row("database cannot be opened", "d", "d/cinefita.sqlite/", none, none,
            "Não foi possível abrir o banco local.");
    }
    void failures() {
        QFETCH(QString, folder);
        QFETCH(QString, blocker);
        QFETCH(QByteArray, payload);
        QFETCH(QByteArray, legacy);
        QFETCH(QString, message);
        QTemporaryDir root;
        folder = root.filePath(folder);
        if (blocker.endsWith(u'/'))
            QVERIFY(QDir().mkpath(root.filePath(blocker)));
        else if (!blocker.isEmpty())
            QVERIFY(writeFile(root.filePath(blocker), "a file, not a folder"));
        const QString database = QDir(folder).filePath(QStringLiteral("cinefita.sqlite"));
        if (!payload.isNull()) {
            loadAtStartup(folder);
            QVERIFY(RawDatabase(database).exec("UPDATE state SET payload=CAST(X'" + payload.toHex() + "' AS TEXT)"));
        }
        if (!legacy.isNull() && QDir().mkpath(folder))
            QVERIFY(writeFile(QDir(folder).filePath(QStringLiteral("dados.json")), legacy));

        const QString failure = failureOf<StartupError>([&] { loadAtStartup(folder); });
        QVERIFY2(!failure.isEmpty() && failure.contains(message), qPrintable(failure));
        if (QFileInfo(database).isFile())
            QCOMPARE(RawDatabase(database).payload("state"), payload.isNull() ? std::nullopt : std::optional(payload));
        QVERIFY(!QFile::exists(QDir(folder).filePath(QStringLiteral("dados-antes-3.0.json"))));
    }
};

QTEST_APPLESS_MAIN(TestStartupLoading)
#include "test_startuploading.moc"
