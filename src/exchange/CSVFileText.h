#pragma once

#include <QByteArrayView>
#include <QFile>
#include <QString>
#include <functional>
#include <optional>

// The bytes of a film CSV as text: the Windows-1252 reading, and the file read in
// pieces that never cut a UTF-8 sequence, so it is never held whole.
namespace csv {

// Windows-1252 text, or nothing when a byte is one the code page leaves undefined.
std::optional<QString> windows1252(QByteArrayView bytes);

// "Não foi possível ler o arquivo …" with the file's own error.
QString readFailure(const QString& path, const QFile& file);

// The file's bytes in order, in pieces of about a mebibyte, each with the count of
// bytes read so far. Throws FileError when the file cannot be read.
void forEachPiece(const QString& path, const std::function<void(QByteArrayView, qint64)>& use);

} // namespace csv
