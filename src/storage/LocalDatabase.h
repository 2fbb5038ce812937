#pragma once

#include "records/Records.h"
#include "records/StoreEncoder.h"

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

struct sqlite3;

// The whole store as one JSON row in a SQLite file, plus the row as it was before
// the last save. Every failure throws FilmCSVError with the text to show, except
// a payload that is not a store, which throws StoreJSONError.
class LocalDatabase {
public:
    // Waits up to busyTimeoutMs for a write lock held by another process. A file
    // made with small pages is moved to large ones here, once; if that fails the
    // file stays as it was and works as before.
    explicit LocalDatabase(const QString& path, int busyTimeoutMs = 5000);
    ~LocalDatabase();
    LocalDatabase(const LocalDatabase&) = delete;
    LocalDatabase& operator=(const LocalDatabase&) = delete;

    // One BEGIN IMMEDIATE transaction: the current row moves to previous_state,
    // then the store becomes the current row. On failure both rows stay as they were.
    void save(const Store& store);

    // Absent when nothing was ever saved. Once read, a log left behind by a crash
    // is copied into the file and emptied, so crashes never make it grow for good,
    // and the store is encoded once so that the next save starts from its text.
    std::optional<Store> load();

    // Copies committed saves from the write-ahead log into the file. Saves do not
    // do it themselves, so the operator never waits for it: the program calls it
    // when idle, and it runs once more on closing. A failure is harmless (the log
    // keeps the data) and is tried again next time.
    bool checkpoint();

    // Pages as large as SQLite allows: a save of a large store touches far fewer.
    static constexpr int pageSize = 65536;

    static constexpr const char* schema =
        "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; CREATE TABLE IF NOT EXISTS state (id INTEGER PRIMARY "
        "KEY CHECK(id=1), payload TEXT NOT NULL); CREATE TABLE IF NOT EXISTS previous_state (id INTEGER PRIMARY KEY "
        "CHECK(id=1), payload TEXT NOT NULL);";

private:
    struct Close {
        void operator()(sqlite3* db) const;
    };

    void exec(const char* sql);
    QByteArray pragma(const char* sql);
    void moveToLargePages();
    void writeState(const QByteArray& payload);
    std::optional<Store> readState();

    std::unique_ptr<sqlite3, Close> db_;
    StoreEncoder encoder_; // keeps the text of what did not change since the last save
    QByteArray payload_;   // kept between saves, so its memory is reused
};
