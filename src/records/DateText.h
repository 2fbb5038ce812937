#pragma once

#include "records/Instant.h"

#include <QDate>
#include <QString>
#include <optional>

// Every calendar question (start of day, days late, date texts) is answered in
// the program-wide calendar: the system's local time zone (TZ in tests).
namespace calendar {
QDate localDate(Instant instant);
Instant startOfDay(QDate date);
Instant startOfDay(Instant instant);
} // namespace calendar

std::optional<Instant> parseDate(const QString& text);     // exact "dd/MM/yyyy", start of that day
std::optional<Instant> parseDateTime(const QString& text); // "dd/MM/yyyy HH:mm", else parseDate
QString dateText(Instant date);                            // "dd/MM/yyyy"
QString dateTimeText(Instant date);                        // "dd/MM/yyyy HH:mm"
