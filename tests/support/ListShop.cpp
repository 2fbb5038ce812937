#include "support/ListShop.h"

Store listShop(Instant now) {
    constexpr double day = 86400;
    Store store;
    store.reportRentalBaseline = 2;
    store.films = {Film{.id = "F1", .title = "Tubarão", .genre = "Ação, ficcao cientifica", .copies = 2, .code = 1},
                   Film{.id = "F2", .title = "Drama Total", .genre = "Drama", .copies = 1, .code = 2},
                   Film{.id = "F3", .title = "Apagado", .genre = "Cult", .copies = 5, .code = 3, .deleted = true},
                   Film{.id = "F4", .title = "Zorro", .genre = "acao", .copies = 1, .code = 4}};
    for (const auto& [id, name, code] :
         {std::tuple{"C1", "João da Silva", 1}, {"C2", "Maria", 2}, {"C3", "Ana", 3}, {"C4", "Zé", 4}})
        store.customers.append(Customer{.id = id, .name = name, .code = code});
    for (const auto& [id, film, customer, due] : {std::tuple{"R3", "F2", "C2", 2 * day},
                                                  {"R1", "F1", "C1", -day},
                                                  {"R4", "GONE", "C3", 3 * day},
                                                  {"R2", "F2", "C2", day}})
        store.rentals.append(Rental{.id = id, .film = film, .customer = customer, .due = now.plusSeconds(due)});
    store.rentals[1].finePerDay = 300;
    store.rentals.append(Rental{.id = "R5", .film = "F3", .customer = "C4", .due = now, .returned = now});
    store.entries = {Entry{.id = "E2", .date = now.plusSeconds(-1000), .description = "Locação", .amount = 550},
                     Entry{.id = "E1", .date = now.plusSeconds(-100), .description = "Fita nova", .amount = -500}};
    return store;
}
