#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

// A file's whole contents; "(unreadable)" when it cannot be read, so a comparison shows it.
inline QByteArray fileBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

inline QString fileText(const QString& path) {
    return QString::fromUtf8(fileBytes(path));
}

// Writes the bytes in place of whatever the file held; false when that fails.
inline bool writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}
