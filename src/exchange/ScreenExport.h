#pragma once

#include "exchange/Progress.h"
#include "records/Records.h"

#include <QList>
#include <QString>
#include <QStringList>

// The one CSV dialect the program writes, and the film import reads back:
// byte-order mark, ";" between cells, every cell quoted with its quotes doubled,
// CR LF between rows and none after the last.
QString csv(const QList<QStringList>& rows);
// The same, reporting rows written of the total now and then.
QString csv(const QList<QStringList>& rows, const Progress& progress);

// The film list as the import understands it: header row, then one row per film.
QList<QStringList> filmExportTable(const QList<Film>& films);

// The whole store as indented JSON with sorted keys. Throws what the JSON writer throws.
QString backupText(const Store& store);

// An export or a backup written to path as UTF-8 and moved into place, as every
// file the program writes, in pieces that report bytes written of the total.
// Throws FileError with the message of any other failed write.
void writeExportFile(const QString& path, const QString& text, const Progress& progress = {});

// Proposed file names of the save dialog.
QString csvExportFileName(bool reportsSection); // "CINEFITA-lista.csv" or "CINEFITA-relatorios.csv"
inline constexpr const char* backupFileName = "CINEFITA-backup.json";

// Status line after a save: "EXPORTADO  │  " and the file's name without its folder.
QString exportedStatus(const QString& savedPath);
