#pragma once

#include "records/FilmCSVError.h"
#include "records/Records.h"
#include "storage/LocalDatabase.h"

#include <QString>
#include <exception>
#include <memory>

// Any failure of start-up loading, with the text the "Dados indisponíveis" alert shows.
using StartupError = FilmCSVError;

// CINEFITA_DATA_DIR (relative to the current folder) or the user's data folder + "/Rebobina".
QString dataFolderPath();

struct LoadedStore {
    std::unique_ptr<LocalDatabase> database;
    Store store;
};

// Creates the folder, opens "cinefita.sqlite", loads or migrates "dados.json",
// assigns codes, sets the report baseline and saves. Throws StartupError.
LoadedStore loadAtStartup(const QString& folder);
