#pragma once

#include <QString>

// "(11) 987654321": ASCII digits only, at most 11; idempotent.
QString formatPhone(const QString& text);
