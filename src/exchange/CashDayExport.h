#pragma once

#include "records/CashDay.h"

#include <QString>

// The day's entries in the screen export's CSV dialect, ready for its save dialog.
QString cashDayCSV(const CashDay& day);
QString cashDayCSVFileName(QDate day); // "CINEFITA-caixa-2026-10-08.csv": sorts by day in a folder
