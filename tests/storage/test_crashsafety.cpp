// A child process commits numbered stores in a loop and is killed with SIGKILL
// at random moments: inside a save, inside the idle checkpoint, inside the move
// of an old file to large pages. After every kill the file must open, hold
// exactly the last committed store or the one being written, keep the one before
// it whole in previous_state, and pass SQLite's integrity check.
//
// The child is this executable run as: test_crashsafety --commit-loop <file> <last committed>.
// CINEFITA_KILLS sets the number of kills (`make crash-test` runs the full count).
#include "records/StoreJSON.h"
#include "storage/LocalDatabase.h"
#include "support/RawDatabase.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>
#include <thread>
#include <unistd.h>

namespace {

// Each number gives a different store of a different size (about 0.5 to 1 MB).
Store numberedStore(int number) {
    Store store;
    store.locadoraName = QStringLiteral("Loja %1").arg(number);
    store.reportRentalBaseline = number;
    const int rentals = 1500 + number % 7 * 300;
    for (int i = 0; i < rentals; ++i) {
        store.rentals.append(Rental{QStringLiteral("R-%1-%2").arg(number).arg(i), "F-1", "C-1",
                                    Instant{700000000.5 + i}, Instant{700259200.25 + number}, std::nullopt, 550, 300});
        store.entries.append(Entry{QStringLiteral("E-%1").arg(i), Instant{700000000.0 + number},
                                   QStringLiteral("Locação número %1 da versão %2").arg(i).arg(number), 550});
    }
    return store;
}

void say(const QByteArray& line) {
    const QByteArray text = line + '\n';
    if (::write(STDOUT_FILENO, text.constData(), size_t(text.size())) != text.size())
        ::_exit(3);
}

[[noreturn]] void commitLoop(const QString& path, int last) {
    say("open");
    LocalDatabase database(path);
    say("opened");
    for (int number = last + 1;; ++number) {
        const Store store = numberedStore(number);
        say("begin " + QByteArray::number(number));
        database.save(store);
        say("done " + QByteArray::number(number));
        if (number % 3 == 0) {
            say("checkpoint");
            database.checkpoint();
            say("idle");
        }
    }
}

// A file as an earlier version left it: small pages, holding stores n-1 and n.
void writeSmallPageFile(const QString& path, int number) {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"})
        QFile::remove(path + suffix);
    RawDatabase raw(path);
    QVERIFY(raw.exec(QByteArray("PRAGMA page_size=4096;") + LocalDatabase::schema));
    QVERIFY(raw.exec("INSERT INTO previous_state VALUES(1,'" + encodeStore(numberedStore(number - 1)) +
                     "'); INSERT INTO state VALUES(1,'" + encodeStore(numberedStore(number)) + "');"));
}

enum class Aim { anywhere, checkpoint, pageMove };

struct Run {
    QByteArray output;
    QByteArray phase; // the child's last line before the kill
};

Run runAndKill(const QString& path, int last, Aim aim) {
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {"--commit-loop", path, QString::number(last)});
    Run run;
    const QByteArray marker = aim == Aim::pageMove ? "open\n" : aim == Aim::checkpoint ? "checkpoint\n" : "opened\n";
    while (!run.output.contains(marker) && child.waitForReadyRead(30000))
        run.output += child.readAllStandardOutput();
    auto* random = QRandomGenerator::global();
    const int maxMicros = aim == Aim::anywhere ? 400000 : aim == Aim::pageMove ? 60000 : 4000;
    std::this_thread::sleep_for(std::chrono::microseconds(random->bounded(maxMicros)));
    child.kill();
    child.waitForFinished(30000);
    run.output += child.readAllStandardOutput();
    const QList<QByteArray> lines = run.output.trimmed().split('\n');
    run.phase = lines.last().split(' ').first();
    return run;
}

int lastNumber(const QByteArray& output, const char* word, int otherwise) {
    int number = otherwise;
    for (const QByteArray& line : output.split('\n'))
        if (line.startsWith(word))
            number = line.mid(int(qstrlen(word)) + 1).toInt();
    return number;
}

} // namespace

class TestCrashSafety : public QObject {
    Q_OBJECT

    QTemporaryDir dir;

private slots:
    void nothingCommittedIsLostByAKill() {
        const QString path = dir.filePath("cinefita.sqlite");
        const int kills =
            qEnvironmentVariableIntValue("CINEFITA_KILLS") > 0 ? qEnvironmentVariableIntValue("CINEFITA_KILLS") : 24;
        int committed = 0;
        QMap<QByteArray, int> phases;
        for (int kill = 0; kill < kills; ++kill) {
            Aim aim = kill % 4 == 1 ? Aim::checkpoint : Aim::anywhere;
            if (kill % 4 == 3 && committed >= 2) {
                writeSmallPageFile(path, committed);
                aim = Aim::pageMove;
            }
            const Run run = runAndKill(path, committed, aim);
            ++phases[run.phase];
            const int done = lastNumber(run.output, "done", committed);
            const int begun = lastNumber(run.output, "begin", committed);

            RawDatabase raw(path);
            QCOMPARE(raw.value("PRAGMA integrity_check;"), QByteArray("ok"));
            const std::optional<Store> loaded = LocalDatabase(path).load();
            const int found = loaded ? int(loaded->reportRentalBaseline.value_or(-1)) : 0;
            QVERIFY2(found == done || (found == begun && begun == done + 1),
                     qPrintable(QStringLiteral("kill %1: found store %2 after %3 done, %4 begun")
                                    .arg(kill)
                                    .arg(found)
                                    .arg(done)
                                    .arg(begun)));
            if (found > 0)
                QVERIFY(*loaded == numberedStore(found));
            const std::optional<QByteArray> previous = raw.payload("previous_state");
            QCOMPARE(previous.has_value(), found >= 2);
            if (previous)
                QVERIFY(decodeStore(*previous) == numberedStore(found - 1));
            committed = found;
        }
        qInfo() << "kills:" << kills << "last store:" << committed << "child's last step at each kill:" << phases;
        QVERIFY(committed > 0);
    }
};

int main(int argc, char** argv) {
    if (argc == 4 && qstrcmp(argv[1], "--commit-loop") == 0)
        commitLoop(QString::fromLocal8Bit(argv[2]), atoi(argv[3]));
    QCoreApplication app(argc, argv);
    TestCrashSafety test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_crashsafety.moc"
