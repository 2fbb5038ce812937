#pragma once

#include "records/FilmCSVError.h"

#include <QString>
#include <functional>

// The ready-to-show message of the error that action throws; empty when it throws none.
template <typename Error = FilmCSVError> QString failureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.description();
    }
    return QString();
}
