#pragma once

#include <QString>
#include <optional>

// Milliseconds from creating the program's controller on the data folder to its
// first painted frame; absent when no frame came.
std::optional<double> startupMillis(const QString& dataFolder);
