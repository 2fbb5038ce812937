#pragma once

#include <QString>
#include <QtGlobal>

// Rows tied to one zone's daylight-saving history run only under that TZ; CTest
// runs such files under each zone. An empty zone runs everywhere.
inline bool inZone(const QString& zone) {
    return zone.isEmpty() || qEnvironmentVariable("TZ") == zone;
}
