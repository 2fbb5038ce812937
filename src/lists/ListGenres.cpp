#include "lists/ListGenres.h"

#include "records/Search.h"

#include <QSet>
#include <algorithm>

QList<GenreChoice> genreChoices(const Store& store) {
    QStringList ownGenres;
    for (const Film& film : activeFilms(store))
        ownGenres.append(genreParts(film.genre));
    std::sort(ownGenres.begin(), ownGenres.end()); // plain text order, not the locale's

    QList<GenreChoice> choices{{QStringLiteral("TODOS OS GÊNEROS"), std::nullopt}};
    QSet<QString> seen;
    for (const QStringList* candidates : {&standardGenres(), static_cast<const QStringList*>(&ownGenres)}) {
        for (const QString& candidate : *candidates) {
            const QString key = genreKey(candidate);
            if (seen.contains(key))
                continue;
            seen.insert(key);
            choices.append({candidate.toUpper(), candidate});
        }
    }
    return choices;
}

bool genreAdmits(const Film& film, const std::optional<QString>& genre) {
    if (!genre)
        return true;
    const QString wanted = genreKey(*genre);
    // The standard spelling genreParts restores has the same key as the piece itself.
    const QStringList pieces = film.genre.split(u',');
    return std::any_of(pieces.begin(), pieces.end(), [&](const QString& piece) {
        const QString key = genreKey(piece);
        return !key.isEmpty() && key == wanted;
    });
}
