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
