#pragma once

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
