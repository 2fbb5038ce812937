#include "support/RawDatabase.h"

#include <sqlite3.h>

RawDatabase::RawDatabase(const QString& path) {
    sqlite3_open(path.toUtf8().constData(), &db_);
}

RawDatabase::~RawDatabase() {
    sqlite3_close(db_);
}

bool RawDatabase::exec(const QByteArray& sql) {
    return sqlite3_exec(db_, sql.constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::optional<QByteArray> RawDatabase::payload(const char* table) {
    sqlite3_stmt* statement = nullptr;
    const QByteArray sql = QByteArray("SELECT payload FROM ") + table + " WHERE id=1";
    std::optional<QByteArray> result;
    if (sqlite3_prepare_v2(db_, sql.constData(), -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW)
        result =
            QByteArray(static_cast<const char*>(sqlite3_column_blob(statement, 0)), sqlite3_column_bytes(statement, 0));
    sqlite3_finalize(statement);
    return result;
}

QByteArray RawDatabase::value(const QByteArray& sql) {
    sqlite3_stmt* statement = nullptr;
    QByteArray result;
    if (sqlite3_prepare_v2(db_, sql.constData(), -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW)
        result = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    sqlite3_finalize(statement);
    return result;
}
