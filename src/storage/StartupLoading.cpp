#include "storage/StartupLoading.h"

#include "files/FileWriting.h"
#include "records/Codes.h"
#include "records/FilmCSVError.h"
#include "records/StoreJSON.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

QString dataFolderPath() {
    if (qEnvironmentVariableIsSet("CINEFITA_DATA_DIR"))
        return QDir::cleanPath(QDir::current().absoluteFilePath(qEnvironmentVariable("CINEFITA_DATA_DIR")));
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Rebobina");
}

namespace {

LoadedStore load(const QString& folder) {
    createFolder(folder);
    const QDir dir(folder);
    LoadedStore loaded;
    loaded.database = std::make_unique<LocalDatabase>(dir.filePath(QStringLiteral("cinefita.sqlite")));

    if (auto saved = loaded.database->load()) {
        loaded.store = std::move(*saved);
    } else {
        const QString legacy = dir.filePath(QStringLiteral("dados.json"));
        if (QFileInfo::exists(legacy)) {
            // The legacy file itself stays untouched; the copy keeps its exact bytes.
            const QByteArray bytes = readWholeFile(legacy);
            loaded.store = decodeStore(bytes);
            writeFileAtomically(dir.filePath(QStringLiteral("dados-antes-3.0.json")), bytes);
        }
    }

    loaded.store = assigningCustomerCodes(assigningFilmCodes(std::move(loaded.store)));
    if (!loaded.store.reportRentalBaseline)
        loaded.store.reportRentalBaseline = loaded.store.rentals.size();
    loaded.database->save(loaded.store);
    return loaded;
}

} // namespace

LoadedStore loadAtStartup(const QString& folder) {
    try {
        return load(folder);
    } catch (const FilmCSVError&) {
        throw; // already the message to show
    } catch (const std::exception& error) {
        throw StartupError(QString::fromUtf8(error.what()));
    }
}
