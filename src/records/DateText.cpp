#include "records/DateText.h"

namespace {

constexpr QStringView datePattern = u"dd/MM/yyyy";
constexpr QStringView dateTimePattern = u"dd/MM/yyyy HH:mm";

} // namespace

namespace calendar {

QDate localDate(Instant instant) {
    return instant.toDateTime().toLocalTime().date();
}

// QDate::startOfDay, not QDateTime(date, 00:00): where a daylight-saving change
// skips midnight itself the day starts at the first time that exists (01:00).
Instant startOfDay(QDate date) {
    return Instant::fromDateTime(date.startOfDay(Qt::LocalTime));
}

Instant startOfDay(Instant instant) {
    return startOfDay(localDate(instant));
}

} // namespace calendar

std::optional<Instant> parseDate(const QString& text) {
    const QDate date = QDate::fromString(text, datePattern);
    // The parser takes "8/10/2026" and surrounding oddities; only a text that
    // is exactly how the date is written counts.
    if (!date.isValid() || date.toString(datePattern) != text)
        return std::nullopt;
    return calendar::startOfDay(date);
}

std::optional<Instant> parseDateTime(const QString& text) {
    const QDateTime dateTime = QDateTime::fromString(text, dateTimePattern);
    if (dateTime.isValid())
        return Instant::fromDateTime(dateTime);
    return parseDate(text);
}

QString dateText(Instant date) {
    return date.toDateTime().toLocalTime().toString(datePattern);
}

QString dateTimeText(Instant date) {
    return date.toDateTime().toLocalTime().toString(dateTimePattern);
}
