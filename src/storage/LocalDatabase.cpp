#include "storage/LocalDatabase.h"

#include "records/FilmCSVError.h"
#include "records/StoreJSON.h"

#include <malloc.h>
#include <sqlite3.h>

namespace {

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

Statement prepare(sqlite3* db, const char* sql, const char* failure) {
    sqlite3_stmt* raw = nullptr;
    const int result = sqlite3_prepare_v2(db, sql, -1, &raw, nullptr);
    Statement statement(raw);
    if (result != SQLITE_OK)
        throw FilmCSVError::invalid(QString::fromUtf8(failure));
    return statement;
}

// A save makes blocks the size of the document (the encoded text, SQLite's record
// of each row, the copied store); past 32 MB glibc maps each one afresh and unmaps
// it on free, so every page of it is faulted in again on every save. Freed blocks
// are kept for the next save instead.
void keepLargeBlocks() {
    static const bool kept = [] {
        mallopt(M_MMAP_THRESHOLD, 256 * 1024 * 1024);
        mallopt(M_TRIM_THRESHOLD, 1024 * 1024 * 1024);
        return true;
    }();
    Q_UNUSED(kept);
}

} // namespace

void LocalDatabase::Close::operator()(sqlite3* db) const {
    sqlite3_exec(db, "PRAGMA wal_checkpoint(PASSIVE);", nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

LocalDatabase::LocalDatabase(const QString& path, int busyTimeoutMs) {
    keepLargeBlocks();
    sqlite3* raw = nullptr;
    const int result = sqlite3_open(path.toUtf8().constData(), &raw);
    db_.reset(raw); // sqlite3_open may hand back a handle even when it fails
    if (result != SQLITE_OK)
        throw FilmCSVError::invalid(QStringLiteral("Não foi possível abrir o banco local."));
    sqlite3_busy_timeout(db_.get(), busyTimeoutMs);
    // Takes effect only on a new file; older files are moved below.
    exec("PRAGMA page_size=65536;");
    exec(schema);
    // Debian's SQLite overwrites every freed page with zeros, which writes the
    // whole document a third time on each save; FAST zeroes only what costs no I/O.
    exec("PRAGMA secure_delete=FAST;");
    // Checkpoints run from checkpoint(), outside the operator's wait.
    exec("PRAGMA wal_autocheckpoint=0;");
    // Room for every page one save touches (the old row read, two rows written)
    // at a hundred thousand rentals, so the copy to previous_state reads nothing
    // back from disk; SQLite takes the memory only as pages are used.
    exec("PRAGMA cache_size=-131072;");
    if (pragma("PRAGMA page_size;").toInt() < pageSize && pragma("PRAGMA page_count;").toInt() > 0)
        moveToLargePages();
}

LocalDatabase::~LocalDatabase() = default;

QByteArray LocalDatabase::pragma(const char* sql) {
    Statement statement = prepare(db_.get(), sql, "Falha ao ler o banco.");
    if (sqlite3_step(statement.get()) != SQLITE_ROW)
        return {};
    return QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)));
}

// VACUUM rebuilds the file with the new page size inside one transaction, which
// needs the rollback journal. A kill or failure midway leaves the old file (the
// journal undoes it on the next open), and the program runs on small pages.
// Another process holding the file keeps it in WAL mode: then nothing is tried.
void LocalDatabase::moveToLargePages() {
    if (pragma("PRAGMA journal_mode=DELETE;") == "delete")
        sqlite3_exec(db_.get(), "PRAGMA page_size=65536; VACUUM;", nullptr, nullptr, nullptr);
    // Should this fail, the rollback journal serves until the next start.
    sqlite3_exec(db_.get(), "PRAGMA journal_mode=WAL;", nullptr, nullptr, nullptr);
}

bool LocalDatabase::checkpoint() {
    return sqlite3_exec(db_.get(), "PRAGMA wal_checkpoint(PASSIVE);", nullptr, nullptr, nullptr) == SQLITE_OK;
}

void LocalDatabase::exec(const char* sql) {
    if (sqlite3_exec(db_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw FilmCSVError::invalid(QStringLiteral("Falha no banco local: ") +
                                    QString::fromUtf8(sqlite3_errmsg(db_.get())));
}

void LocalDatabase::writeState(const QByteArray& payload) {
    exec("INSERT OR REPLACE INTO previous_state SELECT * FROM state;");
    {
        Statement insert =
            prepare(db_.get(), "INSERT OR REPLACE INTO state(id,payload) VALUES(1,?)", "Falha ao preparar gravação.");
        // The payload outlives the statement, so SQLite reads it in place.
        if (sqlite3_bind_text(insert.get(), 1, payload.constData(), int(payload.size()), SQLITE_STATIC) != SQLITE_OK ||
            sqlite3_step(insert.get()) != SQLITE_DONE)
            throw FilmCSVError::invalid(QStringLiteral("Falha ao gravar os dados."));
    }
    exec("COMMIT;");
}

void LocalDatabase::save(const Store& store) {
    encoder_.encode(store, payload_);
    exec("BEGIN IMMEDIATE;");
    try {
        writeState(payload_);
    } catch (...) {
        // The first failure is the one to report; a failed rollback adds nothing useful.
        sqlite3_exec(db_.get(), "ROLLBACK;", nullptr, nullptr, nullptr);
        throw;
    }
}

std::optional<Store> LocalDatabase::load() {
    std::optional<Store> loaded = readState();
    // A log left by a crash is never restarted by the idle checkpoint, so each crash
    // after a save would add to it for good. Now that the document is read, its
    // pages go into the file and the log starts again from nothing; should that
    // fail (another process reading), the idle checkpoint keeps trying.
    sqlite3_exec(db_.get(), "PRAGMA wal_checkpoint(TRUNCATE);", nullptr, nullptr, nullptr);
    // The text of every record is made now, at start-up, so that the first save
    // of the day encodes only what it changed, as every later one does.
    if (loaded) {
        try {
            encoder_.encode(*loaded, payload_);
        } catch (const FilmCSVError&) {
            // A value the writer refuses; the save that meets it reports it.
        }
    }
    return loaded;
}

std::optional<Store> LocalDatabase::readState() {
    Statement select = prepare(db_.get(), "SELECT payload FROM state WHERE id=1", "Falha ao ler o banco.");
    const int result = sqlite3_step(select.get());
    if (result == SQLITE_DONE)
        return std::nullopt;
    if (result == SQLITE_ROW) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(select.get(), 0));
        if (text != nullptr) {
            const int length = sqlite3_column_bytes(select.get(), 0);
            return decodeStore(QByteArray(text, length));
        }
    }
    throw FilmCSVError::invalid(QStringLiteral("Banco local inválido."));
}
