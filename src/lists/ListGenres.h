#pragma once

#include "records/Records.h"

#include <QList>
#include <QString>
#include <optional>

// One item of the film list's genre pop-up: the title shown and the genre it filters by.
struct GenreChoice {
    QString title;
    std::optional<QString> genre; // none: every genre

    friend bool operator==(const GenreChoice&, const GenreChoice&) = default;
};

// "TODOS OS GÊNEROS", the standard genres, then the active films' own ones; each genre once.
QList<GenreChoice> genreChoices(const Store& store);

bool genreAdmits(const Film& film, const std::optional<QString>& genre);
