#include "support/Builders.h"

Film film(const QString& title, std::optional<qint64> code, qint64 copies) {
    return Film{.id = newIdentifier(),
                .title = title,
                .genre = QStringLiteral("Drama"),
                .copies = copies,
                .price = 500,
                .code = code};
}

Customer customer(const QString& name, const QString& phone, std::optional<qint64> code) {
    return Customer{.id = newIdentifier(), .name = name, .phone = phone, .code = code};
}

QList<Film> counterFilms(qsizetype count) {
    const QList<Film> films = {
        Film{.id = "F1", .title = "TUBARÃO", .genre = "Suspense", .copies = 2, .price = 500, .code = 1},
        Film{.id = "F2", .title = "ALIEN", .genre = "Terror", .copies = 1, .price = 400, .code = 2},
        Film{
            .id = "F3", .title = "GREMLINS", .genre = "Comédia", .copies = 3, .price = 300, .code = 3, .deleted = true},
        Film{.id = "F4", .title = "TWISTER", .genre = "Ação", .copies = 1, .price = 700, .code = 4, .release = true},
        Film{.id = "F5", .title = "ROCKY", .genre = "Drama", .copies = 1, .price = 300, .code = 5},
    };
    return films.first(count);
}
