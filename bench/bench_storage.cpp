// Prints how long the store takes to encode, save and load at three sizes, next
// to the floor of writing the same bytes twice with an fsync, and ends with one
// RESULT line for the largest size that a script can read.
#include "Timing.h"
#include "bench_app.h"
#include "records/StoreEncoder.h"
#include "records/StoreJSON.h"
#include "storage/LocalDatabase.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <malloc.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

Store sampleStore(int rentals) {
    Store store;
    store.locadoraName = QStringLiteral("Vídeo Locadora São João");
    store.reportRentalBaseline = 0;
    const int films = std::max(10, rentals / 10);
    const int customers = std::max(10, rentals / 20);
    for (int i = 0; i < films; ++i)
        store.films.append(Film{QStringLiteral("F-%1").arg(i), QStringLiteral("Ação na Cidade Perdida %1").arg(i),
                                "Ação, Aventura", 3, 550, i + 1, 1980 + i % 40, false,
                                QStringLiteral("Um herói improvável enfrenta a máfia da locadora.\nLinha dois."),
                                QStringLiteral("Lost City Action %1").arg(i), i % 5 == 0});
    for (int i = 0; i < customers; ++i)
        store.customers.append(Customer{QStringLiteral("C-%1").arg(i), QStringLiteral("João Conceição %1").arg(i),
                                        "(11) 987654321", i + 1, "Rua das Flores, 123", "São Paulo", "SP",
                                        "01000-000"});
    for (int i = 0; i < rentals; ++i) {
        const double start = 700000000.0 + i * 613.25;
        store.rentals.append(Rental{QStringLiteral("R-%1").arg(i), QStringLiteral("F-%1").arg(i % films),
                                    QStringLiteral("C-%1").arg(i % customers), Instant{start}, Instant{start + 259200},
                                    Instant{start + 300000.5}, 550, 300, 300, i % 2 == 0, i % 2 == 0 ? 0 : 100,
                                    1 + i % 3});
        store.entries.append(Entry{QStringLiteral("E-%1").arg(i), Instant{start},
                                   QStringLiteral("Locação: Ação na Cidade Perdida %1").arg(i % films), 550});
    }
    return store;
}

// What a day at the counter changes between two saves: a rental with its cash
// entry, and the return of an older rental with its fine. The saves are timed on
// a store that changes as the operator's does, not on the same one again.
void counterChange(Store& store, int step) {
    const Rental& last = store.rentals.constLast();
    const double now = last.start.seconds + 600;
    store.rentals.append(Rental{QStringLiteral("R-new-%1").arg(step), last.film, last.customer, Instant{now},
                                Instant{now + 259200}, std::nullopt, 550, 300});
    store.entries.append(Entry{QStringLiteral("E-new-%1").arg(step), Instant{now}, "Locação: Ação", 550});
    Rental& returned = store.rentals[(step * 7919) % store.rentals.size()];
    returned.returned = Instant{now};
    returned.fine = 300;
    store.entries.append(Entry{QStringLiteral("E-fine-%1").arg(step), Instant{now}, "Multa: Ação", 300});
}

void writeSynced(const QString& path, const QByteArray& bytes) {
    const int fd = ::open(path.toLocal8Bit().constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd < 0 || ::write(fd, bytes.constData(), size_t(bytes.size())) != bytes.size() || ::fsync(fd) != 0)
        std::perror("floor write");
    if (fd >= 0)
        ::close(fd);
}

long minorFaults() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
}

// One save taken apart on a plain connection set up as LocalDatabase sets up its
// own: each statement's time and page faults, with the two ways of copying the
// row and of binding the payload, so each part of the gap can be told apart.
void saveParts(const QString& path, const Store& store) {
    QByteArray json;
    encodeStore(store, JSONLayout::compact, json);
    {
        Store changing = store;
        StoreEncoder encoder;
        QByteArray kept;
        encoder.encode(changing, kept);
        QList<double> whole, changed;
        for (int i = 0; i < 7; ++i) {
            whole.append(millis([&] { encodeStore(changing, JSONLayout::compact, json); }));
            counterChange(changing, i);
            changed.append(millis([&] { encoder.encode(changing, kept); }));
        }
        std::sort(whole.begin(), whole.end());
        std::sort(changed.begin(), changed.end());
        std::printf("encoding, %.1f MB:\n  %-38s %8.1f ms\n  %-38s %8.1f ms\n", double(json.size()) / 1e6,
                    "every record", whole[3], "after a change, unchanged runs kept", changed[3]);
        encodeStore(store, JSONLayout::compact, json);
    }
    LocalDatabase(path).save(store);
    sqlite3* db = nullptr;
    sqlite3_open(path.toUtf8().constData(), &db);
    sqlite3_exec(db, "PRAGMA secure_delete=FAST; PRAGMA wal_autocheckpoint=0; PRAGMA cache_size=-131072;", nullptr,
                 nullptr, nullptr);
    struct Step {
        const char* name;
        std::function<void()> work;
    };
    const auto run = [db](const char* sql) {
        if (sqlite3_exec(db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            std::fprintf(stderr, "%s: %s\n", sql, sqlite3_errmsg(db));
    };
    const auto insert = [db, &json](sqlite3_destructor_type kind) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(db, "INSERT OR REPLACE INTO state(id,payload) VALUES(1,?)", -1, &statement, nullptr);
        sqlite3_bind_text(statement, 1, json.constData(), int(json.size()), kind);
        if (sqlite3_step(statement) != SQLITE_DONE)
            std::fprintf(stderr, "insert: %s\n", sqlite3_errmsg(db));
        sqlite3_finalize(statement);
    };
    const Step begin{"begin", [&] {
                         run("BEGIN IMMEDIATE;");
                     }};
    const Step replace{"copy: insert or replace ... select", [&] {
                           run("INSERT OR REPLACE INTO previous_state SELECT * FROM state;");
                       }};
    const Step transfer{"copy: delete, then insert ... select", [&] {
                            run("DELETE FROM previous_state; INSERT INTO previous_state SELECT * FROM state;");
                        }};
    const Step transient{"insert, text copied on binding", [&] {
                             insert(SQLITE_TRANSIENT);
                         }};
    const Step inPlace{"insert, text read in place", [&] {
                           insert(SQLITE_STATIC);
                       }};
    const Step commit{"commit (log written, fsync)", [&] {
                          run("COMMIT;");
                      }};
    const Step checkpoint{"checkpoint when idle", [&] {
                              run("PRAGMA wal_checkpoint(PASSIVE);");
                          }};
    const QList<QPair<const char*, QList<Step>>> variants = {
        {"text copied on binding", {begin, replace, transient, commit, checkpoint}},
        {"text read in place, as LocalDatabase does", {begin, replace, inPlace, commit, checkpoint}},
        {"row copied into an emptied table", {begin, transfer, inPlace, commit, checkpoint}},
    };
    for (const auto& [title, steps] : variants) {
        QList<QList<double>> times(steps.size());
        QList<QList<long>> faults(steps.size());
        for (int round = 0; round < 7; ++round)
            for (qsizetype i = 0; i < steps.size(); ++i) {
                const long before = minorFaults();
                times[i].append(millis(steps[i].work));
                faults[i].append(minorFaults() - before);
            }
        std::printf("one save, %s:\n", title);
        for (qsizetype i = 0; i < steps.size(); ++i) {
            std::sort(times[i].begin(), times[i].end());
            std::sort(faults[i].begin(), faults[i].end());
            std::printf("  %-38s %8.1f ms %8ld page faults\n", steps[i].name, times[i][3], faults[i][3]);
        }
    }
    sqlite3_close(db);
}

struct Figures {
    double encodeMBps = 0, saveMs = 0, firstSaveMs = 0, checkpointMs = 0, floorMs = 0, loadMs = 0;
};

Figures measure(const QTemporaryDir& dir, int rentals) {
    const Store store = sampleStore(rentals);
    Figures figures;
    QByteArray json;
    const double encodeMs = medianMillis(7, [&] { encodeStore(store, JSONLayout::compact, json); });
    figures.encodeMBps = double(json.size()) / 1e3 / encodeMs;

    const QString floorPath = dir.filePath("floor.bin");
    figures.floorMs = medianMillis(9, [&] {
        writeSynced(floorPath, json);
        writeSynced(floorPath, json);
    });
    QFile::remove(floorPath);

    const QString path = dir.filePath(QStringLiteral("bench-%1.sqlite").arg(rentals));
    LocalDatabase(path).save(store); // every measured save also copies a previous row
    Store changing = store;
    // Opened and read as at start-up; the first save follows the first change.
    LocalDatabase database(path);
    database.load();
    counterChange(changing, 100);
    figures.firstSaveMs = millis([&] { database.save(changing); });
    database.checkpoint();
    // The checkpoint runs after each save, as the program's idle timer does, but
    // is timed apart: the operator does not wait for it.
    QList<double> saves, checkpoints;
    for (int i = 0; i < 7; ++i) {
        counterChange(changing, i);
        saves.append(millis([&] { database.save(changing); }));
        checkpoints.append(millis([&] { database.checkpoint(); }));
    }
    std::sort(saves.begin(), saves.end());
    std::sort(checkpoints.begin(), checkpoints.end());
    figures.saveMs = saves[3];
    figures.checkpointMs = checkpoints[3];
    figures.loadMs = medianMillis(3, [&] {
        if (!(database.load() == changing))
            std::fputs("round trip differs!\n", stderr);
    });
    return figures;
}

} // namespace

int main(int argc, char** argv) {
    // Sizes may be given on the command line (e.g. a single small one for profiling).
    QList<int> sizes = {1000, 10000, 100000};
    if (argc > 1) {
        sizes.clear();
        for (int i = 1; i < argc; ++i)
            sizes.append(QByteArray(argv[i]).toInt());
    }
    QTemporaryDir dir;
    std::printf("%9s %10s %9s %9s %7s %11s %14s %9s\n", "rentals", "enc MB/s", "save ms", "floor ms", "ratio",
                "first save", "checkpoint ms", "load ms");
    Figures last;
    for (int rentals : sizes) {
        last = measure(dir, rentals);
        std::printf("%9d %10.0f %9.1f %9.1f %7.2f %11.1f %14.1f %9.1f\n", rentals, last.encodeMBps, last.saveMs,
                    last.floorMs, last.saveMs / last.floorMs, last.firstSaveMs, last.checkpointMs, last.loadMs);
    }
    saveParts(dir.filePath("parts.sqlite"), sampleStore(sizes.last()));
    if (qEnvironmentVariableIsSet("CINEFITA_BENCH_PARTS_ONLY"))
        return 0;
    // The program itself, started on a data folder holding the largest store.
    const QString folder = dir.filePath("app");
    QDir().mkpath(folder);
    LocalDatabase(folder + "/cinefita.sqlite").save(sampleStore(sizes.last()));
    const AppTimes app = appMillis(folder, 7);
    const auto text = [](std::optional<double> ms) {
        return ms ? QByteArray::number(*ms, 'f', 0) : "n/a";
    };
    std::printf("start-up to first frame: %s ms\n", text(app.startupMs).constData());
    std::printf("rental, SALVAR to the rented list drawn: %s ms (a save alone: %.0f ms)\n",
                text(app.rentalMs).constData(), last.saveMs);
    std::printf("return, the rewind answer to the list drawn: %s ms\n", text(app.returnMs).constData());
    std::printf("RESULT save_ratio=%.2f startup_ms=%s rental_ms=%s return_ms=%s encode_mbps=%.0f\n",
                last.saveMs / last.floorMs, text(app.startupMs).constData(), text(app.rentalMs).constData(),
                text(app.returnMs).constData(), last.encodeMBps);
    return 0;
}
