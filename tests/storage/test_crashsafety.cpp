// A child process commits numbered stores in a loop and is killed with SIGKILL
// at random moments: inside a save, inside the idle checkpoint, inside the move
// of an old file to large pages. After every kill the file must open, hold
// exactly the last committed store or the one being written, keep the one before
// it whole in previous_state, and pass SQLite's integrity check.
//
// CINEFITA_KILLS sets the number of kills (`make crash-test` runs the full count).
#include "records/StoreJSON.h"
#include "storage/LocalDatabase.h"
#include "support/ChildProcess.h"
#include "support/NumberedStores.h"
#include "support/RawDatabase.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>
#include <csignal>
#include <thread>

namespace {

// Each number gives a different store of a different size (about 0.5 to 1 MB).
Store numberedStore(int number) {
    return ::numberedStore(number, 1500 + number % 7 * 300);
}

[[noreturn]] void commitLoop(const QString& path, int last, int out) {
    tellLine(out, "open");
    LocalDatabase database(path);
    database.load(); // as start-up does
    tellLine(out, "opened");
    for (int number = last + 1;; ++number) {
        const Store store = numberedStore(number);
        tellLine(out, "begin " + QByteArray::number(number));
        database.save(store);
        tellLine(out, "done " + QByteArray::number(number));
        if (number % 3 == 0) {
            tellLine(out, "checkpoint");
            database.checkpoint();
            tellLine(out, "idle");
        }
    }
}

enum class Aim { anywhere, checkpoint, pageMove };

// The child's whole output; it is killed a random moment after the line that aim waits for.
QByteArray runAndKill(const QString& path, int last, Aim aim) {
    const QByteArray after = aim == Aim::pageMove ? "open\n" : aim == Aim::checkpoint ? "checkpoint\n" : "opened\n";
    const int maxMicros = aim == Aim::anywhere ? 400000 : aim == Aim::pageMove ? 60000 : 4000;
    const auto kill = [maxMicros](pid_t child) {
        std::this_thread::sleep_for(std::chrono::microseconds(QRandomGenerator::global()->bounded(maxMicros)));
        ::kill(child, SIGKILL);
    };
    return runChild([&](int out) { commitLoop(path, last, out); }, after, kill).output;
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
                QVERIFY(writeSmallPageFile(path, numberedStore(committed - 1), numberedStore(committed)));
                aim = Aim::pageMove;
            }
            const QByteArray output = runAndKill(path, committed, aim);
            ++phases[output.trimmed().split('\n').last().split(' ').first()]; // the child's last step
            const int done = lastNumber(output, "done", committed);
            const int begun = lastNumber(output, "begin", committed);

            RawDatabase raw(path);
            QCOMPARE(raw.value("PRAGMA integrity_check;"), QByteArray("ok"));
            const std::optional<Store> loaded = LocalDatabase(path).load();
            const int found = loaded ? int(loaded->reportRentalBaseline.value_or(-1)) : 0;
            QVERIFY2(found == done || (found == begun && begun == done + 1),
                     qPrintable(QString::asprintf("kill %d: found store %d after %d done, %d begun", kill, found, done,
                                                  begun)));
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

    // Killed each time right after a save, before any idle checkpoint: the log
    // must not keep the frames of every earlier run.
    void killsAfterEachSaveLeaveASmallLog() {
        const QString path = dir.filePath("log.sqlite");
        const qint64 documentBytes = encodeStore(numberedStore(6)).size(); // the largest of the numbered stores
        for (int kill = 1; kill <= 12; ++kill) {
            runChild(
                [&](int out) {
                    LocalDatabase database(path);
                    database.load();
                    database.save(numberedStore(kill));
                    tellLine(out, "done");
                    ::pause();
                },
                "done\n", [](pid_t child) { ::kill(child, SIGKILL); });
            // One save since the open: the new row and the copied one, on 64 KiB pages.
            const qint64 log = QFileInfo(path + "-wal").size();
            QVERIFY2(log <= 2 * documentBytes + 8 * LocalDatabase::pageSize,
                     qPrintable(QStringLiteral("kill %1: log of %2 bytes").arg(kill).arg(log)));
        }
        QVERIFY(LocalDatabase(path).load() == numberedStore(12));
    }
};

QTEST_APPLESS_MAIN(TestCrashSafety)
#include "test_crashsafety.moc"
