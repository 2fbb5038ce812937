#pragma once

#include "records/Records.h"

// Records with the fields a test does not care about filled in.
Film film(const QString& title, std::optional<qint64> code = std::nullopt, qint64 copies = 1);
Customer customer(const QString& name, const QString& phone = QString(), std::optional<qint64> code = 1);

// The counter's films, the first count of: TUBARÃO (2 copies), ALIEN (1), GREMLINS (3,
// removed), TWISTER (a release), ROCKY.
QList<Film> counterFilms(qsizetype count);
