#include "exchange/ScreenExport.h"

#include "records/Codes.h"
#include "records/StoreJSON.h"

#include <QFileInfo>

namespace {

QString quoted(QString cell) {
    cell.replace(QStringLiteral("\""), QStringLiteral("\"\""));
    return u'"' + cell + u'"';
}

} // namespace

QString csv(const QList<QStringList>& rows) {
    QStringList lines;
    lines.reserve(rows.size());
    for (const QStringList& row : rows) {
        QStringList cells;
        cells.reserve(row.size());
        for (const QString& cell : row)
            cells.append(quoted(cell));
        lines.append(cells.join(u';'));
    }
    return QChar(0xFEFF) + lines.join(QStringLiteral("\r\n"));
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
