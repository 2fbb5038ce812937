#include "records/Instant.h"

#include <algorithm>
#include <cmath>

QDateTime Instant::toDateTime() const {
    // A stored date can be any number; beyond a few hundred thousand years it is
    // pinned to the edge rather than overflowing the conversion.
    constexpr double limit = 8.0e15; // milliseconds, about 250 000 years
    // Rounded down, so 23:59:59.9996 is still that day; only a product a few units
    // in the last place below a whole millisecond (0.123 s stored as 0.12299…) is
    // binary noise and goes up.
    const double milliseconds = seconds * 1000.0;
    const double noise = std::ldexp(std::abs(milliseconds), -50);
    const double offset = std::clamp(std::floor(milliseconds + noise), -limit, limit);
    return QDateTime::fromMSecsSinceEpoch(qint64(offset) + referenceUnixSeconds * 1000);
}
