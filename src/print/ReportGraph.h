#pragma once

#include <QString>

// A 16-character bar: full blocks then shades; a non-zero value shows at least one block.
QString reportGraph(qint64 value, qint64 maximum);
