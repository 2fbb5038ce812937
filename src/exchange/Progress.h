#pragma once

#include <QtGlobal>
#include <functional>

// Called now and then during work that can be long: how much is done of the
// total, in the work's own unit. An empty function is allowed and means nobody
// is watching.
using Progress = std::function<void(qint64 done, qint64 total)>;
