#include "exchange/ScreenExport.h"

#include "files/FileWriting.h"
#include "records/Codes.h"
#include "records/StoreJSON.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>

namespace {

QString quoted(QString cell) {
    cell.replace(QStringLiteral("\""), QStringLiteral("\"\""));
    return u'"' + cell + u'"';
}

} // namespace

QString csv(const QList<QStringList>& rows) {
    return csv(rows, {});
}

QString csv(const QList<QStringList>& rows, const Progress& progress) {
    constexpr qsizetype reportEvery = 2048;
    QStringList lines;
    lines.reserve(rows.size());
    for (const QStringList& row : rows) {
        QStringList cells;
        cells.reserve(row.size());
        for (const QString& cell : row)
            cells.append(quoted(cell));
        lines.append(cells.join(u';'));
        if (progress && lines.size() % reportEvery == 0)
            progress(lines.size(), rows.size());
    }
    if (progress)
        progress(rows.size(), rows.size());
    return QChar(0xFEFF) + lines.join(QStringLiteral("\r\n"));
}

void writeExportFile(const QString& path, const QString& text, const Progress& progress) {
    constexpr qsizetype pieceSize = qsizetype(1) << 20;
    const QByteArray bytes = text.toUtf8();
    QSaveFile file(path);
    bool written = file.open(QIODevice::WriteOnly);
    for (qsizetype at = 0; written && at < bytes.size(); at += pieceSize) {
        const qsizetype size = std::min(pieceSize, bytes.size() - at);
        written = file.write(bytes.constData() + at, size) == size;
        if (written && progress)
            progress(at + size, bytes.size());
    }
    if (!written || !file.commit())
        throw FileError(QStringLiteral("Não foi possível gravar o arquivo %1: %2")
                            .arg(QDir::toNativeSeparators(path), file.errorString()));
}

QList<QStringList> filmExportTable(const QList<Film>& films) {
    QList<QStringList> table;
    table.reserve(films.size() + 1);
    table.append({QStringLiteral("CÓDIGO"), QStringLiteral("FILME"), QStringLiteral("TÍTULO ORIGINAL"),
                  QStringLiteral("ANO"), QStringLiteral("GÊNERO"), QStringLiteral("QUANT."),
                  QStringLiteral("PREÇO (R$)"), QStringLiteral("SINOPSE"), QStringLiteral("CATEGORIA")});
    for (const Film& film : films) {
        table.append({filmCode(film), film.title, film.originalTitle.value_or(QString()),
                      film.year ? QString::number(*film.year) : QString(), film.genre, QString::number(film.copies),
                      QString::asprintf("%.2f", double(film.price) / 100.0), film.sinapse.value_or(QString()),
                      film.release.value_or(false) ? QStringLiteral("LANÇAMENTO") : QStringLiteral("ACERVO")});
    }
    return table;
}

QString backupText(const Store& store) {
    return QString::fromUtf8(encodeStore(store, JSONLayout::sortedIndented));
}

QString csvExportFileName(bool reportsSection) {
    return reportsSection ? QStringLiteral("CINEFITA-relatorios.csv") : QStringLiteral("CINEFITA-lista.csv");
}

QString exportedStatus(const QString& savedPath) {
    return QStringLiteral("EXPORTADO  │  ") + QFileInfo(savedPath).fileName();
}
