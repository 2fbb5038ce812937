#include "storage/LocalDatabase.h"

#include "records/FilmCSVError.h"
#include "records/StoreJSON.h"

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

} // namespace

void LocalDatabase::Close::operator()(sqlite3* db) const {
    sqlite3_close(db);
}

LocalDatabase::LocalDatabase(const QString& path) {
    sqlite3* raw = nullptr;
    const int result = sqlite3_open(path.toUtf8().constData(), &raw);
    db_.reset(raw); // sqlite3_open may hand back a handle even when it fails
    if (result != SQLITE_OK)
        throw FilmCSVError::invalid(QStringLiteral("Não foi possível abrir o banco local."));
    sqlite3_busy_timeout(db_.get(), 5000);
    exec(schema);
}

LocalDatabase::~LocalDatabase() = default;

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
        if (sqlite3_bind_text(insert.get(), 1, payload.constData(), int(payload.size()), SQLITE_TRANSIENT) !=
                SQLITE_OK ||
            sqlite3_step(insert.get()) != SQLITE_DONE)
            throw FilmCSVError::invalid(QStringLiteral("Falha ao gravar os dados."));
    }
    exec("COMMIT;");
}

void LocalDatabase::save(const Store& store) {
    const QByteArray payload = encodeStore(store, JSONLayout::compact);
    exec("BEGIN IMMEDIATE;");
    try {
        writeState(payload);
    } catch (...) {
        // The first failure is the one to report; a failed rollback adds nothing useful.
        sqlite3_exec(db_.get(), "ROLLBACK;", nullptr, nullptr, nullptr);
        throw;
    }
}

std::optional<Store> LocalDatabase::load() {
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
