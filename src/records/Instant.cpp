#include "records/Instant.h"

#include <algorithm>
#include <cmath>

QDateTime Instant::toDateTime() const {
    // A stored date can be any number; beyond a few hundred thousand years it is
    // pinned to the edge rather than overflowing the conversion.
    constexpr double limit = 8.0e15; // milliseconds, about 250 000 years
    const double offset = std::clamp(std::floor(seconds * 1000.0 + 0.5), -limit, limit);
    return QDateTime::fromMSecsSinceEpoch(qint64(offset) + referenceUnixSeconds * 1000);
}
