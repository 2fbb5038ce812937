#pragma once

#include "records/Records.h"

#include <QByteArray>
#include <QString>
#include <optional>

// Reading a JSON backup back in place of the whole store. Nothing here changes the
// store in use: the screen asks restoreQuestion and commits the result as one
// change, so the document replaced becomes the database's previous state.

inline constexpr const char* restoreFailedTitle = "Backup não restaurado";
inline constexpr const char* restoreQuestionTitle = "RESTAURAR BACKUP?";

// The store a backup holds, made ready as start-up makes a loaded store ready:
// codes repaired, the report baseline set when absent. Any document of the store's
// JSON form reads: the backup's indented layout, the database's compact one and the
// legacy "dados.json" alike. Anything else throws FilmCSVError with the reader's
// reason, for alert(restoreFailedTitle, description()).
Store restoredStore(const QByteArray& bytes);
// The same from a file; one that cannot be read throws FilmCSVError with the system's reason.
Store restoredStoreFromFile(const QString& path);

// What the question compares, for the store in use and the one in the file.
struct StoreCounts {
    qsizetype films = 0;
    qsizetype customers = 0;
    qsizetype rentals = 0;
    qsizetype entries = 0;
    std::optional<Instant> newestRental; // the latest start
};
StoreCounts storeCounts(const Store& store);

// The question's text: counts now and in the file, and what restoring does.
QString restoreQuestion(const Store& current, const Store& restored);
