#pragma once

#include <QString>
#include <optional>

// The program itself on a large store, in this process on the offscreen platform,
// with its event loop and timers running and a second of idle between operations.
// Each figure is the median of `rounds`; absent when the operation did not finish.
struct AppTimes {
    std::optional<double> startupMs; // creating the controller to its first painted frame
    std::optional<double> rentalMs;  // SALVAR on a filled rental form until the rented list is drawn
    std::optional<double> returnMs;  // N to the rewind question until the returns list is drawn
};

AppTimes appMillis(const QString& dataFolder, int rounds);
