#pragma once

#include "modes/ModeChecks.h"
#include "records/FilmCSVError.h"
#include "records/Records.h"

#include <QDir>
#include <QUuid>
#include <optional>

// What the self-test's checks share: a scratch folder, small records to check with,
// and the groups of checks, each in the file of its subject.
namespace selfTest {

// True when the action is refused with the program's own error.
template <typename Action> bool refuses(Action action) {
    try {
        action();
    } catch (const FilmCSVError&) {
        return true;
    }
    return false;
}

// A scratch folder in the system's temporary folder, removed however the checks end.
class ScratchFolder {
public:
    ScratchFolder()
        : path_(QDir(QDir::tempPath())
                    .filePath(QStringLiteral("cinefita-sqlite-test-") +
                              QUuid::createUuid().toString(QUuid::WithoutBraces))) {
        check(QDir().mkpath(path_), "Temporary folder cannot be created");
    }
    ~ScratchFolder() { QDir(path_).removeRecursively(); }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    QString file(const QString& name) const { return QDir(path_).filePath(name); }

private:
    QString path_;
};

Instant localInstant(int year, int month, int day, int hour, int minute);
Film film(const QString& id, const QString& title, std::optional<qint64> code, qint64 copies = 1);
Customer customer(const QString& id, const QString& name, std::optional<qint64> code);
Rental rental(const QString& id, const QString& filmID, Instant start, std::optional<qint64> copy);
QStringList titles(const QList<Film>& films);
// Saves into a fresh database file and reads back through a second connection.
std::optional<Store> throughDatabase(const QString& path, const Store& store);

// SelfTestRecordChecks.cpp: storage, rules, labels and cards.
void persistenceRentalsLabelsAndCards(const ScratchFolder& scratch);
void recordsDatesAndHistory();
void migrationSearchAndRoundTrip(const ScratchFolder& scratch);

// SelfTestTextChecks.cpp: CSV, genres and Portuguese order.
void csvImport();
void sinapseAndGenres(const ScratchFolder& scratch);
void ordering();

} // namespace selfTest
