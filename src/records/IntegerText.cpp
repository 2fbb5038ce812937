#include "records/IntegerText.h"

#include <limits>

std::optional<qint64> wholeInteger(QStringView text) {
    qsizetype i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) {
        negative = text[i] == u'-';
        ++i;
    }
    if (i == text.size())
        return std::nullopt;
    // Accumulated as a negative number so the most negative value fits too.
    qint64 value = 0;
    for (; i < text.size(); ++i) {
        if (text[i] < u'0' || text[i] > u'9')
            return std::nullopt;
        const int digit = text[i].unicode() - u'0';
        if (value < (std::numeric_limits<qint64>::min() + digit) / 10)
            return std::nullopt;
        value = value * 10 - digit;
    }
    if (!negative) {
        if (value == std::numeric_limits<qint64>::min())
            return std::nullopt;
        value = -value;
    }
    return value;
}
