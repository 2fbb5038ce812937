#include "records/StoreJSON.h"
#include "storage/StartupLoading.h"

#include <QtTest>
#include <sqlite3.h>

namespace {

void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

// Straight from SQLite, so the check does not go through the code under test.
QStringList payloads(const QString& databasePath, const char* table) {
    QStringList found;
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(databasePath.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
        sqlite3_stmt* statement = nullptr;
        const QByteArray sql = QByteArray("SELECT payload FROM ") + table;
        if (sqlite3_prepare_v2(db, sql.constData(), -1, &statement, nullptr) == SQLITE_OK)
            while (sqlite3_step(statement) == SQLITE_ROW)
                found.append(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0))));
        sqlite3_finalize(statement);
    }
    sqlite3_close(db);
    return found;
}

QString failureOf(const QString& folder) {
    try {
        loadAtStartup(folder);
    } catch (const StartupError& error) {
        return error.description();
    }
    return QString();
}

// Films without codes and five rentals, as versions before codes wrote them.
QByteArray legacyDocument() {
    QByteArray rentals;
    for (int i = 1; i <= 5; ++i)
        rentals += QByteArray(i > 1 ? "," : "") + R"({"id":"r)" + QByteArray::number(i) +
                   R"(","film":"a","customer":"c","start":10.5,"due":20,"price":300,"finePerDay":100})";
    return R"({ "films": [{"id":"a","title":"Alien","genre":"Terror","copies":2,"price":300},)"
           R"({"id":"b","title":"Brazil","genre":"Drama","copies":1,"price":300},)"
           R"({"id":"c","title":"Casablanca","genre":"Drama","copies":1,"price":300}],)"
           R"( "customers": [{"id":"c","name":"Ana","phone":"(11) 987654321"}],)"
           R"( "rentals": [)" +
           rentals + R"(], "entries": [] })" + "\n";
}

} // namespace

class TestStartupLoading : public QObject {
    Q_OBJECT

private slots:
    void dataFolderFromEnvironment() {
        const QByteArray saved = qgetenv("CINEFITA_DATA_DIR");
        const bool wasSet = qEnvironmentVariableIsSet("CINEFITA_DATA_DIR");
        qputenv("CINEFITA_DATA_DIR", "relativa/dados");
        QCOMPARE(dataFolderPath(), QDir::current().absoluteFilePath(QStringLiteral("relativa/dados")));
        qputenv("CINEFITA_DATA_DIR", "/var/tmp/cinefita");
        QCOMPARE(dataFolderPath(), QStringLiteral("/var/tmp/cinefita"));
        qunsetenv("CINEFITA_DATA_DIR");
        QVERIFY(dataFolderPath().endsWith(QStringLiteral("/Rebobina")));
        QCOMPARE(QFileInfo(dataFolderPath()).path(),
                 QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
        if (wasSet)
            qputenv("CINEFITA_DATA_DIR", saved);
    }

    void newFolder() {
        QTemporaryDir root;
        const QString folder = root.filePath(QStringLiteral("a/b/dados"));
        const LoadedStore loaded = loadAtStartup(folder);
        QVERIFY(loaded.database);
        Store expected;
        expected.reportRentalBaseline = 0;
        QCOMPARE(loaded.store, expected);
        const QString database = QDir(folder).filePath(QStringLiteral("cinefita.sqlite"));
        QCOMPARE(payloads(database, "state"), QStringList{QString::fromUtf8(encodeStore(expected))});
        QCOMPARE(payloads(database, "previous_state"), QStringList{});
    }

    void migratesLegacyFileOnce() {
        QTemporaryDir folder;
        const QByteArray legacy = "\xEF\xBB\xBF" + legacyDocument(); // as a text editor saves it
        writeFile(folder.filePath(QStringLiteral("dados.json")), legacy);
        writeFile(folder.filePath(QStringLiteral("dados-antes-3.0.json")), "old copy");

        const LoadedStore first = loadAtStartup(folder.path());
        QList<qint64> codes;
        for (const Film& film : first.store.films)
            codes.append(film.code.value_or(0));
        QCOMPARE(codes, (QList<qint64>{1, 2, 3}));
        QCOMPARE(first.store.customers.first().code, 1);
        QCOMPARE(first.store.rentals.size(), 5);
        QCOMPARE(first.store.reportRentalBaseline, 5);
        QCOMPARE(first.database->load(), first.store);
        QCOMPARE(readFile(folder.filePath(QStringLiteral("dados-antes-3.0.json"))), legacy);
        QCOMPARE(readFile(folder.filePath(QStringLiteral("dados.json"))), legacy);

        // From now on the database is the data; the legacy file is not read again.
        writeFile(folder.filePath(QStringLiteral("dados.json")), "not json at all");
        const LoadedStore second = loadAtStartup(folder.path());
        QCOMPARE(second.store, first.store);
    }

    void keepsBaselineAndCodes() {
        QTemporaryDir folder;
        Store store;
        store.reportRentalBaseline = 2;
        store.films.append(Film{QStringLiteral("f"), QStringLiteral("Alien"), QStringLiteral("Terror"), 1, 300, 42});
        writeFile(folder.filePath(QStringLiteral("dados.json")), encodeStore(store));
        QCOMPARE(loadAtStartup(folder.path()).store, store);
    }

    void invalidLegacyFileWritesNothing() {
        QTemporaryDir folder;
        writeFile(folder.filePath(QStringLiteral("dados.json")), R"({"films":[],"customers":[],"rentals":[]})");
        QVERIFY(!failureOf(folder.path()).isEmpty());
        QCOMPARE(payloads(folder.filePath(QStringLiteral("cinefita.sqlite")), "state"), QStringList{});
        QVERIFY(!QFile::exists(folder.filePath(QStringLiteral("dados-antes-3.0.json"))));
    }

    void invalidDatabasePayload() {
        QTemporaryDir folder;
        const QString database = folder.filePath(QStringLiteral("cinefita.sqlite"));
        loadAtStartup(folder.path());
        sqlite3* db = nullptr;
        QCOMPARE(sqlite3_open(database.toUtf8().constData(), &db), SQLITE_OK);
        QCOMPARE(sqlite3_exec(db, "UPDATE state SET payload='{broken'", nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(db);
        writeFile(folder.filePath(QStringLiteral("dados.json")),
                  R"({"films":[],"customers":[],"rentals":[],"entries":[]})");

        QVERIFY(!failureOf(folder.path()).isEmpty());
        QCOMPARE(payloads(database, "state"), QStringList{QStringLiteral("{broken")});
        QVERIFY(!QFile::exists(folder.filePath(QStringLiteral("dados-antes-3.0.json"))));
    }

    void folderCannotBeCreated() {
        QTemporaryDir root;
        writeFile(root.filePath(QStringLiteral("arquivo")), "a file, not a folder");
        const QString message = failureOf(root.filePath(QStringLiteral("arquivo/dados")));
        QVERIFY(message.contains(root.filePath(QStringLiteral("arquivo/dados"))));
    }

    void databaseCannotBeOpened() {
        QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("cinefita.sqlite")));
        QCOMPARE(failureOf(folder.path()), QStringLiteral("Não foi possível abrir o banco local."));
    }
};

QTEST_APPLESS_MAIN(TestStartupLoading)
#include "test_startuploading.moc"
