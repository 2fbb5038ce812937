#pragma once

#include <QDateTime>
#include <compare>

// A point in time as the stored double: seconds since 2001-01-01 00:00:00 UTC.
// Kept as the double itself so a fractional second survives a JSON round trip
// exactly (QDateTime keeps only milliseconds).
struct Instant {
    double seconds = 0;

    static constexpr qint64 referenceUnixSeconds = 978307200; // 2001-01-01T00:00:00Z

    static Instant fromDateTime(const QDateTime& dateTime) {
        return {double(dateTime.toMSecsSinceEpoch() - referenceUnixSeconds * 1000) / 1000.0};
    }
    static Instant now() { return fromDateTime(QDateTime::currentDateTimeUtc()); }

    // Down to the millisecond, which is all a calendar question needs.
    QDateTime toDateTime() const;

    Instant plusSeconds(double delta) const { return {seconds + delta}; }

    friend bool operator==(const Instant&, const Instant&) = default;
    friend auto operator<=>(const Instant&, const Instant&) = default;
};
