#pragma once

#include <QString>
#include <optional>

// The program itself on a large store, in this process on the offscreen platform.
struct AppTimes {
    std::optional<double> startupMs;           // creating the controller to its first painted frame
    std::optional<double> rentalMs;            // SALVAR on a filled rental form until the rented list is repainted
    std::optional<double> returnMs;            // FINALIZAR, the rewind question answered, until the list is repainted
    double rentalSaveMs = 0, returnSaveMs = 0; // the commits inside them
};

AppTimes appMillis(const QString& dataFolder);
