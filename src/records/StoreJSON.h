#pragma once

#include "records/FilmCSVError.h"
#include "records/Records.h"

#include <QByteArray>
#include <QString>
#include <exception>

// The one JSON form of the store, shared by the database, the legacy data file
// and the backup.

enum class JSONLayout {
    compact,        // no whitespace: the database payload
    sortedIndented, // indented, keys in byte order: the backup file
};

// Reading or writing failed; description() says what is wrong (which key, which record).
using StoreJSONError = FilmCSVError;

QByteArray encodeStore(const Store& store, JSONLayout layout = JSONLayout::compact);
// The same into a buffer kept by the caller, whose memory is reused: afterwards
// it holds exactly the document.
void encodeStore(const Store& store, JSONLayout layout, QByteArray& buffer);

// Strict: the whole document is rejected on a missing required key or a value of
// the wrong type. Null for an optional key means absent; unknown keys are ignored.
Store decodeStore(const QByteArray& json);
