#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

struct sqlite3;

// Straight SQL on a database file, beside the code under test: to look at the
// stored rows and to provoke failures (a lock, a damaged payload).
class RawDatabase {
public:
    explicit RawDatabase(const QString& path);
    ~RawDatabase();
    RawDatabase(const RawDatabase&) = delete;
    RawDatabase& operator=(const RawDatabase&) = delete;

    bool exec(const QByteArray& sql);
    std::optional<QByteArray> payload(const char* table); // the row's exact bytes; absent without a row
    QByteArray value(const QByteArray& sql);              // first column of the first row, as text

private:
    sqlite3* db_ = nullptr;
};
