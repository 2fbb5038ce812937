#include "app/App.h"

#include "look/DOSSearchField.h"
#include "screens/RentalScreen.h"

// The rental screen is a class of its own; the controller builds it, hands its
// form and lists to the key map and the focus ring, and passes the operator's
// commands on to it.

void App::rentalScreen() {
    rental = new RentalScreen(*this, rentalFilm, rentalCustomer, rentalTapes);
    screen.formView = rental->formView();
    screen.filmMatches = rental->filmMatches();
    screen.clientMatches = rental->clientMatches();
    screen.basketList = rental->basketList();
}

void App::controlTextDidChange(QLineEdit* field) {
    if (rental != nullptr)
        rental->controlTextDidChange(field);
}

void App::finalizeRental() {
    if (rental != nullptr)
        rental->finalizeRental();
}

void App::clearSearch() {
    search->clear();
}
