#pragma once

#include "records/Records.h"
#include "storage/LocalDatabase.h"

#include <QString>
#include <exception>
#include <memory>

// Any failure of start-up loading, with the text the "Dados indisponíveis" alert shows.
class StartupError : public std::exception {
public:
    explicit StartupError(QString message) : message_(std::move(message)), utf8_(message_.toUtf8()) {}
    const QString& description() const { return message_; }
    const char* what() const noexcept override { return utf8_.constData(); }

private:
    QString message_;
    QByteArray utf8_;
};

// CINEFITA_DATA_DIR (relative to the current folder) or the user's data folder + "/Rebobina".
QString dataFolderPath();

struct LoadedStore {
    std::unique_ptr<LocalDatabase> database;
    Store store;
};

// Creates the folder, opens "cinefita.sqlite", loads or migrates "dados.json",
// assigns codes, sets the report baseline and saves. Throws StartupError.
LoadedStore loadAtStartup(const QString& folder);
