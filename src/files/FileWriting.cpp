#include "files/FileWriting.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <filesystem>
#include <system_error>

namespace {

QString shown(const QString& path) {
    return QDir::toNativeSeparators(path);
}

} // namespace

void createFolder(const QString& path) {
    std::error_code error;
    const std::filesystem::path target(QFile::encodeName(path).toStdString());
    std::filesystem::create_directories(target, error);
    if (!error && std::filesystem::is_directory(target, error))
        return;
    const QString reason = error ? QString::fromLocal8Bit(error.message().c_str()) : QStringLiteral("Not a directory");
    throw FileError(QStringLiteral("Não foi possível criar a pasta %1: %2").arg(shown(path), reason));
}

void writeFileAtomically(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        throw FileError(
            QStringLiteral("Não foi possível gravar o arquivo %1: %2").arg(shown(path), file.errorString()));
}

QByteArray readWholeFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError(QStringLiteral("Não foi possível ler o arquivo %1: %2").arg(shown(path), file.errorString()));
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw FileError(QStringLiteral("Não foi possível ler o arquivo %1: %2").arg(shown(path), file.errorString()));
    return bytes;
}
