#include "app/App.h"

#include "screens/CounterDocuments.h"

#include <QLabel>

// The one place that knows the last rental or return: every counter path hands
// its act here once saved, and F10 prints that act's receipt from the store.

void App::rememberCounterAct(const CounterAct& act) {
    lastCounterAct = act;
    if (status != nullptr)
        status->setText(QStringLiteral("SALVO NO BANCO LOCAL  │  [F10] RECIBO"));
}

void App::printReceipt() {
    CounterDocuments::printReceipt(*this, lastCounterAct);
}
