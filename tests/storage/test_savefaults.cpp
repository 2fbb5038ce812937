// Saves made by another process while something is wrong with the file system
// or the file: each fails with its message and leaves the last committed
// document (and the one before it) in place.
#include "records/StoreJSON.h"
#include "storage/LocalDatabase.h"
#include "support/ChildProcess.h"
#include "support/Failures.h"
#include "support/RawDatabase.h"

#include <QTemporaryDir>
#include <QtTest>
#include <csignal>
#include <memory>
#include <sys/resource.h>
#include <unistd.h>

namespace {

Store storeNamed(const QString& name) {
    Store store;
    store.locadoraName = name;
    for (int i = 0; i < 4000; ++i)
        store.entries.append(Entry{QStringLiteral("E-%1").arg(i), Instant{700000000.5 + i},
                                   QStringLiteral("Locação de %1, número %2").arg(name).arg(i), 550});
    return store;
}

enum class Fault { readOnlyFolder, fileSizeLimit, lockHeldElsewhere };

// In a child process: cause the fault, open the database and save "Nova", tell
// what happened. (A read-only folder stops the opening already: an open database
// keeps writing to the files it holds.) Under the size limit the child then lifts
// it and saves again, as a full disk with space freed would let it.
void saveInChild(const QString& path, Fault fault, int out) {
    // Root ignores file modes: the read-only case runs as nobody.
    if (fault == Fault::readOnlyFolder && ::geteuid() == 0 && ::setuid(65534) != 0)
        ::_exit(4);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    if (fault == Fault::fileSizeLimit) {
        std::signal(SIGXFSZ, SIG_IGN); // the write then fails with EFBIG
        rlimit small = limit;
        small.rlim_cur = 200 * 1024;
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    std::unique_ptr<LocalDatabase> database;
    const QString failure = failureOf([&] {
        database = std::make_unique<LocalDatabase>(path, 100);
        database->save(storeNamed("Nova"));
    });
    tellLine(out, failure.isEmpty() ? QByteArray("saved") : failure.toUtf8());
    if (fault == Fault::fileSizeLimit && database) {
        ::setrlimit(RLIMIT_FSIZE, &limit);
        database->save(storeNamed("Nova"));
        tellLine(out, "saved after the fault");
    }
}

} // namespace

class TestSaveFaults : public QObject {
    Q_OBJECT

    QTemporaryDir dir;
    QString path() const { return dir.filePath("data/cinefita.sqlite"); }

private slots:
    void init() {
        QDir(dir.filePath("data")).removeRecursively();
        QVERIFY(QDir(dir.path()).mkdir("data"));
        QFile::setPermissions(dir.path(), QFile::permissions(dir.path()) | QFile::ExeOther); // for nobody
        LocalDatabase database(path());
        database.save(storeNamed("Anterior"));
        database.save(storeNamed("Antiga"));
    }
    void cleanup() {
        QFile::setPermissions(dir.filePath("data"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QFile::setPermissions(path(), QFile::ReadOwner | QFile::WriteOwner);
    }

    void faultLeavesTheLastDocument_data() {
        QTest::addColumn<int>("fault");
        QTest::addColumn<QStringList>("told");
        QTest::addColumn<QString>("current");
        QTest::newRow("read-only folder")
            << int(Fault::readOnlyFolder) << QStringList{"Não foi possível abrir o banco local."} << "Antiga";
        QTest::newRow("file size limit, then space again")
            << int(Fault::fileSizeLimit) << QStringList{"Falha no banco local: disk I/O error", "saved after the fault"}
            << "Nova";
        QTest::newRow("write lock held by another process")
            << int(Fault::lockHeldElsewhere) << QStringList{"Falha no banco local: database is locked"} << "Antiga";
    }
    void faultLeavesTheLastDocument() {
        QFETCH(int, fault);
        QFETCH(QStringList, told);
        QFETCH(QString, current);
        RawDatabase other(path());
        if (Fault(fault) == Fault::lockHeldElsewhere)
            QVERIFY(other.exec("BEGIN IMMEDIATE;"));
        if (Fault(fault) == Fault::readOnlyFolder) {
            QVERIFY(QFile::setPermissions(path(), QFile::ReadOwner | QFile::ReadOther));
            QVERIFY(QFile::setPermissions(dir.filePath("data"),
                                          QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther));
        }
        const ChildRun child = runChild([&](int out) { saveInChild(path(), Fault(fault), out); });
        QCOMPARE(child.status, 0);
        other.exec("ROLLBACK;");
        QCOMPARE(QString::fromUtf8(child.output).trimmed().split('\n'), told);
        QCOMPARE(other.value("PRAGMA integrity_check;"), QByteArray("ok"));
        QCOMPARE(decodeStore(other.payload("state").value_or("")).locadoraName, std::optional(current));
        const QString previous = current == "Nova" ? "Antiga" : "Anterior";
        QCOMPARE(decodeStore(other.payload("previous_state").value_or("")).locadoraName, std::optional(previous));
    }
};

QTEST_APPLESS_MAIN(TestSaveFaults)
#include "test_savefaults.moc"
