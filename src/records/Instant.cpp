#include "records/Instant.h"

#include <cmath>

QDateTime Instant::toDateTime() const {
    const auto msecs = qint64(std::floor(seconds * 1000.0 + 0.5)) + referenceUnixSeconds * 1000;
    return QDateTime::fromMSecsSinceEpoch(msecs);
}
