#include "exchange/CashDayExport.h"

#include "exchange/ScreenExport.h"

QString cashDayCSV(const CashDay& day) {
    return csv(cashDayTable(day));
}

QString cashDayCSVFileName(QDate day) {
    return QStringLiteral("CINEFITA-caixa-") + day.toString(u"yyyy-MM-dd") + QStringLiteral(".csv");
}
