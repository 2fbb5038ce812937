#pragma once

#include "records/Records.h"

#include <QString>
#include <memory>
#include <optional>

struct sqlite3;

// The whole store as one JSON row in a SQLite file, plus the row as it was before
// the last save. Every failure throws FilmCSVError with the text to show, except
// a payload that is not a store, which throws StoreJSONError.
class LocalDatabase {
public:
    explicit LocalDatabase(const QString& path);
    ~LocalDatabase();
    LocalDatabase(const LocalDatabase&) = delete;
    LocalDatabase& operator=(const LocalDatabase&) = delete;

    // One BEGIN IMMEDIATE transaction: the current row moves to previous_state,
    // then the store becomes the current row. On failure both rows stay as they were.
    void save(const Store& store);

    // Absent when nothing was ever saved.
    std::optional<Store> load();

    static constexpr const char* schema =
        "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; CREATE TABLE IF NOT EXISTS state (id INTEGER PRIMARY "
        "KEY CHECK(id=1), payload TEXT NOT NULL); CREATE TABLE IF NOT EXISTS previous_state (id INTEGER PRIMARY KEY "
        "CHECK(id=1), payload TEXT NOT NULL);";

private:
    struct Close {
        void operator()(sqlite3* db) const;
    };

    void exec(const char* sql);
    void writeState(const QByteArray& payload);

    std::unique_ptr<sqlite3, Close> db_;
};
