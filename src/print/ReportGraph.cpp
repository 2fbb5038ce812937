#include "print/ReportGraph.h"

#include <algorithm>
#include <cmath>

QString reportGraph(qint64 value, qint64 maximum) {
    constexpr int cells = 16;
    int blocks = 0;
    if (value != 0 && maximum != 0) {
        // std::round goes half away from zero; clamped while still a double so
        // a huge ratio never overflows the conversion.
        const double scaled = double(value) / double(maximum) * cells;
        blocks = int(std::clamp(std::round(scaled), 1.0, double(cells)));
    }
    return QString(blocks, QChar(0x2588)) + QString(cells - blocks, QChar(0x2592));
}
