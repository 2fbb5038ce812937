#include "screens/ReturnsDesk.h"

#include "lists/Sections.h"
#include "print/Receipt.h"
#include "records/DateText.h"
#include "records/FilmCSVError.h"
#include "records/MoneyText.h"
#include "records/RentalRules.h"
#include "screens/RewindQuestion.h"
#include "screens/ScreenHost.h"

#include <algorithm>

// Taking a tape back: the rented list shows a rental's details and leads to the
// returns list, where the return is confirmed with the rewind question.

namespace {

const Rental* findRental(const Store& store, const QString& id) {
    const auto found = std::find_if(store.rentals.cbegin(), store.rentals.cend(),
                                    [&id](const Rental& rental) { return rental.id == id; });
    return found != store.rentals.cend() ? &*found : nullptr;
}

template <typename Record> std::optional<Record> byID(const QList<Record>& records, const QString& id) {
    const auto found =
        std::find_if(records.cbegin(), records.cend(), [&id](const Record& record) { return record.id == id; });
    return found != records.cend() ? std::make_optional(*found) : std::nullopt;
}

} // namespace

void ReturnsDesk::selectRental(ScreenHost& host) {
    const Store& store = host.shop();
    const std::optional<QString> id = host.selected();
    if (!id)
        return;
    const Rental* rental = findRental(store, *id);
    if (rental == nullptr)
        return;
    const std::optional<Film> rented = byID(store.films, rental->film);
    const std::optional<Customer> renter = byID(store.customers, rental->customer);

    ModalAlert details;
    details.title = rented ? rented->title : QStringLiteral("Locação");
    details.text = QStringLiteral("Cliente: ") + (renter ? renter->name : QString()) + QStringLiteral("\nData: ") +
                   dateText(rental->start) + QStringLiteral("\nData de devolução: ") + dateText(rental->due) +
                   QStringLiteral("\nMulta atual: ") + money(fineSoFar(*rental, host.now()));
    details.buttons = {QStringLiteral("DEVOLUÇÃO"), QStringLiteral("VOLTAR")};
    if (host.styledModal(std::move(details)) != firstButtonAnswer)
        return;

    host.navigate(Section::returns);
    host.showSelected(*id);
}

void ReturnsDesk::returnRental(ScreenHost& host) {
    const Store& store = host.shop();
    const std::optional<QString> id = host.selected();
    if (!id)
        return;
    const Rental* rental = findRental(store, *id);
    if (rental == nullptr || rental->returned)
        return;
    const std::optional<Film> rented = byID(store.films, rental->film);

    const std::optional<bool> rewound =
        askRewound(host, rewindQuestionText(rented ? rented->title : QString(), fineSoFar(*rental, host.now())));
    if (!rewound)
        return;

    Store changed;
    try {
        changed = returnedStore(store, *id, *rewound, host.now());
    } catch (const FilmCSVError& error) {
        host.alert(QStringLiteral("Devolução não salva"), error.description());
        return;
    }
    if (!host.commit(changed))
        return;
    host.render();
    host.rememberCounterAct(returnAct(*id));
}
