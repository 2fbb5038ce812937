#pragma once

#include "records/DateText.h"

// An instant written as the screens write it; the tests' texts always parse.
inline Instant at(const QString& text) {
    return parseDateTime(text).value();
}
