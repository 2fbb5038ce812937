#include "records/Search.h"

#include "records/Codes.h"

#include <algorithm>

QString foldedKey(const QString& text) {
    const QString decomposed = text.normalized(QString::NormalizationForm_D);
    QString key;
    key.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        const auto category = c.category();
        if (category != QChar::Mark_NonSpacing && category != QChar::Mark_SpacingCombining &&
            category != QChar::Mark_Enclosing)
            key.append(c);
    }
    return key.toLower();
}

bool matches(const QString& text, const QString& query) {
    const QString needle = foldedKey(query);
    // Also covers a query made only of accents, which folds to nothing.
    if (needle.isEmpty())
        return false;
    return foldedKey(text).contains(needle);
}

QList<Film> matchingFilms(const QList<Film>& films, const QString& query) {
    const QString trimmed = query.trimmed();
    if (trimmed.isEmpty())
        return films;
    const bool digitsOnly = std::all_of(trimmed.begin(), trimmed.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    // Too many digits for any code leaves only the title search.
    const std::optional<qint64> code = digitsOnly ? numericCode(trimmed) : std::nullopt;

    QList<Film> found;
    for (const Film& film : films) {
        if ((code && film.code == code) || matches(film.title, trimmed))
            found.append(film);
    }
    return found;
}

QString genreKey(const QString& genre) {
    return foldedKey(genre.trimmed());
}

QStringList genreParts(const QString& genre) {
    QStringList parts;
    QStringList keys;
    for (const QString& piece : genre.split(u',')) {
        const QString trimmed = piece.trimmed();
        const QString key = genreKey(trimmed);
        if (key.isEmpty() || keys.contains(key))
            continue;
        keys.append(key);
        const auto standard = std::find_if(standardGenres().begin(), standardGenres().end(),
                                           [&](const QString& name) { return genreKey(name) == key; });
        parts.append(standard != standardGenres().end() ? *standard : trimmed);
    }
    return parts;
}

const QStringList& standardGenres() {
    static const QStringList genres = {QStringLiteral("Ação"),
                                       QStringLiteral("Aventura"),
                                       QStringLiteral("Comédia"),
                                       QStringLiteral("Drama"),
                                       QStringLiteral("Ficção científica"),
                                       QStringLiteral("Terror"),
                                       QStringLiteral("Suspense"),
                                       QStringLiteral("Romance"),
                                       QStringLiteral("Fantasia"),
                                       QStringLiteral("Animação"),
                                       QStringLiteral("Documentário"),
                                       QStringLiteral("Musical"),
                                       QStringLiteral("Faroeste"),
                                       QStringLiteral("Crime"),
                                       QStringLiteral("Policial"),
                                       QStringLiteral("Super-heróis"),
                                       QStringLiteral("Noir"),
                                       QStringLiteral("Guerra"),
                                       QStringLiteral("Espionagem")};
    return genres;
}

QList<Film> activeFilms(const Store& store) {
    QList<Film> films;
    for (const Film& film : store.films) {
        if (!film.deleted.value_or(false))
            films.append(film);
    }
    return films;
}

QList<Customer> activeCustomers(const Store& store) {
    QList<Customer> customers;
    for (const Customer& customer : store.customers) {
        if (!customer.deleted.value_or(false))
            customers.append(customer);
    }
    return customers;
}

QString searchQuery(const QString& fieldText) {
    const auto blank = [](QChar c) {
        return c == u' ' || c == u'\t';
    };
    qsizetype first = 0;
    qsizetype end = fieldText.size();
    while (first < end && blank(fieldText.at(first)))
        ++first;
    while (end > first && blank(fieldText.at(end - 1)))
        --end;
    return fieldText.mid(first, end - first);
}
