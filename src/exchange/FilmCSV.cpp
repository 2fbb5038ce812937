#include "exchange/FilmCSV.h"

#include "exchange/CSVFileText.h"
#include "exchange/CSVRowReader.h"
#include "exchange/FilmBuilder.h"
#include "files/FileWriting.h"
#include "records/FilmCSVError.h"

#include <QFile>
#include <QStringDecoder>
#include <algorithm>

// The film CSV's ways in, text or a file: each goes through the row reader into the
// film builder.

namespace {

const QString unreadableText = QStringLiteral("Não foi possível ler o texto do CSV.");

} // namespace

QList<QStringList> parseFilmCSV(const QString& text) {
    QList<QStringList> rows;
    CSVRowReader reader([&rows](const QStringList& row) { rows.append(row); });
    reader.feed(text);
    reader.finish();
    return rows;
}

Store importFilmsCSV(const QString& text, const Store& into) {
    Store result = into;
    FilmBuilder builder(into, &result);
    CSVRowReader reader([&builder](const QStringList& row) { builder.take(row); });
    reader.feed(text);
    reader.finish();
    builder.finish();
    return result;
}

QString decodedCSVText(const QByteArray& bytes) {
    QStringDecoder utf8(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (!utf8.hasError())
        return text;
    if (auto fallback = csv::windows1252(bytes))
        return *fallback;
    throw FilmCSVError::invalid(unreadableText);
}

Store importFilmCSVFile(const QString& path, const Store& into, const Progress& progress) {
    qint64 total = 0;
    qint64 base = 0;
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            throw FileError(csv::readFailure(path, file));
        if (file.size() > largestFilmCSVBytes)
            throw FilmCSVError::invalid(
                QStringLiteral("O arquivo tem %1 MB e o limite para importar é de %2 MB. Divida a lista em "
                               "arquivos menores.")
                    .arg((file.size() + 1024 * 1024 - 1) / (1024 * 1024))
                    .arg(largestFilmCSVBytes / (1024 * 1024)));
        total = 3 * file.size();
    }
    const auto report = [&](qint64 read) {
        if (progress)
            progress(std::min(base + read, total), total);
    };

    // First reading: the encoding, decided on the whole file as decodedCSVText does.
    QStringDecoder check(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    bool utf8 = true;
    bool latin = true;
    csv::forEachPiece(path, [&](QByteArrayView piece, qint64 read) {
        if (utf8) {
            const QString decoded = check.decode(piece); // decodes only when made a QString
            utf8 = !check.hasError();
        }
        if (latin)
            latin = std::none_of(piece.begin(), piece.end(), [](char byte) {
                return byte == '\x81' || byte == '\x8D' || byte == '\x8F' || byte == '\x90' || byte == '\x9D';
            });
        report(read);
    });
    if (!utf8 && !latin)
        throw FilmCSVError::invalid(unreadableText);
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    const auto text = [&](QByteArrayView piece) {
        return utf8 ? QString(decoder.decode(piece)) : csv::windows1252(piece).value_or(QString());
    };

    // Second reading: every record checked, only codes kept (and let go before the
    // films are made).
    base = total / 3;
    qsizetype records = 0;
    {
        FilmBuilder checker(into, nullptr);
        CSVRowReader reader([&checker](const QStringList& row) { checker.take(row); });
        csv::forEachPiece(path, [&](QByteArrayView piece, qint64 read) {
            reader.feed(text(piece));
            report(read);
        });
        reader.finish();
        checker.finish();
        records = checker.records();
    }

    // Third reading: the films, into room made for all of them at once.
    base = 2 * total / 3;
    Store result = into;
    result.films.reserve(into.films.size() + records);
    FilmBuilder builder(into, &result);
    CSVRowReader reader([&builder](const QStringList& row) { builder.take(row); });
    csv::forEachPiece(path, [&](QByteArrayView piece, qint64 read) {
        reader.feed(text(piece));
        report(read);
    });
    reader.finish();
    builder.finish();
    return result;
}
