#include "BenchShop.h"

#include <QStringList>

namespace benchShop {

Film film(int i) {
    static const QStringList firstWords = {"Ação",  "Aventura", "Cidade",   "Fúria",
                                           "Noite", "Mistério", "Corações", "Estrela"};
    static const QStringList lastWords = {"Perdida",  "Selvagem", "do Sertão", "em Chamas",
                                          "Proibida", "Final",    "de Aço"};
    static const QStringList genres = {"Ação, Aventura",          "Drama", "Comédia", "Terror",
                                       "ficcao cientifica, Ação", "Cult"};
    return Film{.id = QStringLiteral("F-%1").arg(i),
                .title = QStringLiteral("%1 %2 %3")
                             .arg(firstWords.at(i % firstWords.size()),
                                  lastWords.at((i / firstWords.size()) % lastWords.size()))
                             .arg(i / 56 + 1),
                .genre = genres.at(i % genres.size()),
                .copies = 1 + i % 4,
                .price = 550,
                .code = i + 1,
                .year = 1970 + i % 30,
                .release = i % 5 == 0};
}

Customer customer(int i) {
    return Customer{.id = QStringLiteral("C-%1").arg(i),
                    .name = QStringLiteral("João Conceição %1").arg(i),
                    .phone = "(11) 98765-4321",
                    .code = i + 1,
                    .address = "Rua das Flores, 123",
                    .city = "São Paulo",
                    .state = "SP",
                    .zip = "01000-000"};
}

Rental rental(int i, const QString& film, bool out) {
    const Instant start{out ? now.seconds - (i % 1000) * 600.0 : now.seconds - 400000.0 - (rentalCount - i) * 600.0};
    Rental rental{.id = QStringLiteral("R-%1").arg(i),
                  .film = film,
                  .customer = QStringLiteral("C-%1").arg(i % customerCount),
                  .start = start,
                  .due = start.plusSeconds(259200),
                  .price = 550,
                  .finePerDay = 300};
    if (!out)
        rental.returned = start.plusSeconds(i % 3 == 0 ? 345600 : 200000);
    return rental;
}

Store yearsOfBusiness() {
    Store store;
    store.locadoraName = QStringLiteral("Vídeo Locadora São João");
    for (int i = 0; i < filmCount; ++i)
        store.films.append(film(i));
    for (int i = 0; i < customerCount; ++i)
        store.customers.append(customer(i));
    for (int i = 0; i < rentalCount; ++i)
        store.rentals.append(rental(i, QStringLiteral("F-%1").arg(i % filmCount), i % 10 == 0));
    return store;
}

} // namespace benchShop
