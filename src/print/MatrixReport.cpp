#include "print/MatrixReport.h"

#include "print/PrintPage.h"
#include "records/DateText.h"

QString matrixReportText(const QString& shopName, Instant now, const QList<QStringList>& rows) {
    QString text = QStringLiteral("CINEFITA • ") + shopName + u'\n' + QStringLiteral("RELATÓRIO MATRICIAL • ") +
                   dateTimeText(now) + u'\n' + QString(70, QChar(0x2550)) + u'\n';
    QStringList lines;
    lines.reserve(rows.size());
    for (const QStringList& row : rows)
        lines.append(row.join(QStringLiteral("   ")));
    return text + lines.join(u'\n');
}

QString matrixReportDocument(const QString& reportText) {
    return printDocument(QStringLiteral("RELATÓRIO MATRICIAL"),
                         QStringLiteral("<pre>") + escapedHTML(reportText) + QStringLiteral("</pre>"));
}
