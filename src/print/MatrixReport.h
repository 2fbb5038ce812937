#pragma once

#include "records/Instant.h"

#include <QList>
#include <QString>
#include <QStringList>

// The dot-matrix report of a list screen: a heading with the shop name, the
// moment it was printed, a double rule, then one line per row with its cells
// three spaces apart. LF between lines, none after the last row.
QString matrixReportText(const QString& shopName, Instant now, const QList<QStringList>& rows);

// The report text in a preformatted block of a print page.
QString matrixReportDocument(const QString& reportText);
