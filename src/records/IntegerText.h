#pragma once

#include <QStringView>
#include <optional>

// A whole base-10 integer: optional sign, ASCII digits only, no spaces; absent
// on anything else and on 64-bit overflow. Codes, quantities and years typed by
// the operator or read from a file are all read this strictly.
std::optional<qint64> wholeInteger(QStringView text);
