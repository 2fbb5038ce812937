#pragma once

#include <QByteArray>
#include <QtGlobal>

// What the built-in check modes share: a failed condition ends the mode with its
// message, and modes that draw use the offscreen platform when there is no display.

struct CheckFailed {
    const char* message;
};

inline void check(bool condition, const char* message) {
    if (!condition)
        throw CheckFailed{message};
}

inline void drawOffscreenWithoutDisplay() {
    const bool hasDisplay = !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (!hasDisplay && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}
