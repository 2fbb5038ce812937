#include "app/App.h"

#include "look/DOSTable.h"
#include "records/DateText.h"
#include "records/FilmCSVError.h"
#include "records/MoneyText.h"
#include "records/RentalRules.h"

#include <QItemSelectionModel>
#include <algorithm>

// Taking a tape back: the rented list shows a rental's details and leads to the
// returns list, where the return is confirmed with the rewind question.

namespace {

const Rental* findRental(const Store& store, const QString& id) {
    const auto found = std::find_if(store.rentals.cbegin(), store.rentals.cend(),
                                    [&id](const Rental& rental) { return rental.id == id; });
    return found != store.rentals.cend() ? &*found : nullptr;
}

} // namespace

void App::selectRental() {
    const std::optional<QString> id = selected();
    if (!id)
        return;
    const Rental* rental = findRental(store, *id);
    if (rental == nullptr)
        return;
    const std::optional<Film> rented = film(rental->film);
    const std::optional<Customer> renter = customer(rental->customer);

    ModalAlert details;
    details.title = rented ? rented->title : QStringLiteral("Locação");
    details.text = QStringLiteral("Cliente: ") + (renter ? renter->name : QString()) + QStringLiteral("\nData: ") +
                   dateText(rental->start) + QStringLiteral("\nData de devolução: ") + dateText(rental->due) +
                   QStringLiteral("\nMulta atual: ") + money(fineSoFar(*rental, seams.clock()));
    details.buttons = {QStringLiteral("DEVOLUÇÃO"), QStringLiteral("VOLTAR")};
    if (styledModal(std::move(details)) != firstButtonAnswer)
        return;

    navigate(Section::returns);
    rows();
    const qsizetype row = filteredIDs.indexOf(*id);
    if (row >= 0 && table != nullptr && table->selectionModel() != nullptr)
        table->selectionModel()->setCurrentIndex(table->model()->index(int(row), 0),
                                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    focus(table);
}

void App::returnRental() {
    const std::optional<QString> id = selected();
    if (!id)
        return;
    const Rental* rental = findRental(store, *id);
    if (rental == nullptr || rental->returned)
        return;
    const std::optional<Film> rented = film(rental->film);

    ModalAlert question;
    question.title = QStringLiteral("FITA FOI REBOBINADA? [S/N]");
    question.text = (rented ? rented->title : QString()) + QStringLiteral("\nMulta por atraso: ") +
                    money(fineSoFar(*rental, seams.clock())) +
                    QStringLiteral("\n[N] aplica taxa simbólica de R$ 1,00.\nConfirmar registra a devolução.");
    question.buttons = {QStringLiteral("[S] SIM"), QStringLiteral("[N] NÃO"), QStringLiteral("CANCELAR")};
    const int answer = styledModal(std::move(question));
    if (answer != firstButtonAnswer && answer != firstButtonAnswer + 1)
        return;

    Store changed;
    try {
        changed = returnedStore(store, *id, answer == firstButtonAnswer, seams.clock());
    } catch (const FilmCSVError& error) {
        alert(QStringLiteral("Devolução não salva"), error.description());
        return;
    }
    if (commit(changed))
        render();
}
