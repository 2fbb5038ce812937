#include "records/FilmCSVError.h"
#include "records/StoreJSON.h"
#include "storage/LocalDatabase.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/RawDatabase.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

Store storeNamed(const QString& name) {
    Store store;
    store.locadoraName = name;
    store.films = {Film{"F1", "Cinema Paradiso", "Drama", 1, 500, 1, std::nullopt, std::nullopt,
                        QStringLiteral("Linha um\nLinha dois — ação")}};
    store.rentals = {Rental{"R1", "F1", "C1", Instant{700000000.25}, Instant{700259200.25}, std::nullopt, 500, 200}};
    return store;
}

} // namespace

class TestLocalDatabase : public QObject {
    Q_OBJECT

    QTemporaryDir dir;
    QString path() const { return dir.filePath("cinefita.sqlite"); }

private slots:
    void init() { QFile::remove(path()); }

    void failedSaveRollsBackBothRows() {
        LocalDatabase database(path());
        database.save(storeNamed("Primeira"));
        database.save(storeNamed("Segunda"));
        {
            RawDatabase raw(path());
            QVERIFY(raw.exec("CREATE TRIGGER refuse BEFORE INSERT ON state BEGIN SELECT RAISE(ABORT, 'no'); END;"));
        }
        QCOMPARE(failureOf([&] { database.save(storeNamed("Terceira")); }), QString("Falha ao gravar os dados."));
        RawDatabase raw(path());
        QCOMPARE(raw.payload("previous_state"), encodeStore(storeNamed("Primeira")));
        QCOMPARE(raw.payload("state"), encodeStore(storeNamed("Segunda")));
        // The connection is usable again: no transaction was left open.
        QVERIFY(raw.exec("DROP TRIGGER refuse;"));
        database.save(storeNamed("Quarta"));
        QCOMPARE(database.load()->locadoraName, std::optional<QString>("Quarta"));
    }

    // Another process's write lock is waited out for the busy timeout before the save gives up.
    void lockedDatabaseWaitsBeforeFailing() {
        LocalDatabase database(path(), 100);
        RawDatabase other(path());
        QVERIFY(other.exec("BEGIN IMMEDIATE;"));
        QElapsedTimer waited;
        waited.start();
        QCOMPARE(failureOf([&] { database.save(storeNamed("Segunda")); }),
                 QString("Falha no banco local: database is locked"));
        QVERIFY(waited.elapsed() >= 100);
    }

    // Large pages on new files and, once, on files made with small ones; a file
    // another process holds open is left as it is and still works.
    void pageSize_data() {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<bool>("heldOpen");
        QTest::addColumn<QByteArray>("pageSize");
        QTest::newRow("new file") << QByteArray() << false << QByteArray("65536");
        const QByteArray small = QByteArray("PRAGMA page_size=4096;") + LocalDatabase::schema;
        QTest::newRow("small pages") << small << false << QByteArray("65536");
        QTest::newRow("small pages, held open") << small << true << QByteArray("4096");
    }
    void pageSize() {
        QFETCH(QByteArray, before);
        QFETCH(bool, heldOpen);
        QFETCH(QByteArray, pageSize);
        if (!before.isEmpty()) {
            RawDatabase setup(path());
            QVERIFY(setup.exec(before.constData()));
            const QByteArray rows = "INSERT INTO previous_state VALUES(1,'" + encodeStore(storeNamed("Primeira")) +
                                    "'); INSERT INTO state VALUES(1,'" + encodeStore(storeNamed("Segunda")) + "');";
            QVERIFY(setup.exec(rows.constData()));
        }
        std::optional<RawDatabase> other;
        if (heldOpen)
            QVERIFY(other.emplace(path()).exec("SELECT count(*) FROM state;"));
        LocalDatabase database(path(), 100);
        if (!before.isEmpty())
            QCOMPARE(database.load(), std::optional(storeNamed("Segunda")));
        database.save(storeNamed("Terceira"));
        RawDatabase after(path());
        QCOMPARE(after.value("PRAGMA page_size;"), pageSize);
        QCOMPARE(after.value("PRAGMA journal_mode;"), QByteArray("wal"));
        QCOMPARE(after.value("PRAGMA integrity_check;"), QByteArray("ok"));
        QCOMPARE(after.payload("state"), encodeStore(storeNamed("Terceira")));
        // The idle checkpoint leaves the document in the file itself.
        QVERIFY(database.checkpoint());
        QVERIFY(QFile::copy(path(), dir.filePath("copy.sqlite")));
        QCOMPARE(RawDatabase(dir.filePath("copy.sqlite")).payload("state"), encodeStore(storeNamed("Terceira")));
        QFile::remove(dir.filePath("copy.sqlite"));
    }

    void unreadableRows_data() {
        QTest::addColumn<QByteArray>("sql");
        QTest::addColumn<bool>("jsonError");
        const QByteArray schema = LocalDatabase::schema;
        QTest::newRow("payload a blob") << schema + "INSERT INTO state VALUES(1,x'00');" << true;
        // A table made by hand without NOT NULL: the schema script leaves it as it is.
        QTest::newRow("payload null") << QByteArray("CREATE TABLE state (id INTEGER PRIMARY KEY, payload TEXT);"
                                                    "INSERT INTO state VALUES(1,NULL);")
                                      << false;
    }
    void unreadableRows() {
        QFETCH(QByteArray, sql);
        QFETCH(bool, jsonError);
        {
            RawDatabase raw(path());
            QVERIFY(raw.exec(sql.constData()));
        }
        LocalDatabase database(path());
        const QByteArray fileBefore = fileBytes(path());
        try {
            database.load();
            QFAIL("an unreadable row was accepted");
        } catch (const FilmCSVError& error) {
            // A row's JSON says what is wrong in it; anything else is the database's one message.
            QCOMPARE(error.description() == QString("Banco local inválido."), !jsonError);
        }
        QCOMPARE(fileBytes(path()), fileBefore);
    }
};

QTEST_APPLESS_MAIN(TestLocalDatabase)
#include "test_localdatabase.moc"
