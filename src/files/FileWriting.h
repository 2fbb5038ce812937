#pragma once

#include "records/FilmCSVError.h"

#include <QByteArray>
#include <QString>
#include <exception>

// A folder or file operation failed; description() is ready to show and ends
// with the system's own reason.
using FileError = FilmCSVError;

// Creates the folder and any missing parents; an existing folder is fine. Throws FileError.
void createFolder(const QString& path);

// Written aside and moved into place, replacing a file of the same name, so a
// reader never sees half a file. Throws FileError.
void writeFileAtomically(const QString& path, const QByteArray& bytes);

// The whole file. Throws FileError.
QByteArray readWholeFile(const QString& path);
