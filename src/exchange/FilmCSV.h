#pragma once

#include "exchange/Progress.h"
#include "records/Records.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// Rows of fields in file order. Accepts a byte-order mark, ";" or "," (chosen
// from the first line), quoted fields with doubled quotes and line breaks, and
// CR, LF or CR LF line ends. Rows whose fields are all blank are dropped.
// Throws FilmCSVError.
QList<QStringList> parseFilmCSV(const QString& text);

// A copy of the store with the films of the CSV appended in file order, or
// FilmCSVError naming the first bad record: nothing is imported unless every
// record is good.
Store importFilmsCSV(const QString& text, const Store& into);

// The file's bytes as text: UTF-8 when they are valid UTF-8, else Windows-1252.
// Throws FilmCSVError when neither reads them.
QString decodedCSVText(const QByteArray& bytes);

// The largest film CSV the import takes: the films a file adds cost about five times
// its size in memory, so a larger file is refused before any of it is read.
inline constexpr qint64 largestFilmCSVBytes = 64 * 1024 * 1024;

// importFilmsCSV(decodedCSVText(bytes of the file), into) with the same result
// and messages, but the file is read in pieces and never held whole, as bytes or
// as text: it is read once to choose the encoding, once to check every record
// and once to build the films, so a refused file costs no more memory than its
// pieces. Progress counts bytes over the three readings. Throws FilmCSVError
// (also for a file over largestFilmCSVBytes), or FileError when the file cannot be read.
Store importFilmCSVFile(const QString& path, const Store& into, const Progress& progress = {});
