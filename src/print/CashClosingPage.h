#pragma once

#include "records/CashDay.h"

#include <QString>

inline constexpr const char* cashClosingPageName = "Fechamento-de-caixa";

// The day's closing as the dialog gives it, then the day's entries in time order.
QString cashClosingDocument(const CashDay& day, const QString& shopName);
// In one call from the store.
QString cashClosingPage(const Store& store, QDate day);
