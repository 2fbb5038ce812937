#include "app/App.h"

#include "look/DOSTable.h"
#include "screens/ReturnsDesk.h"

#include <QItemSelectionModel>

void App::selectRental() {
    ReturnsDesk::selectRental(*this);
}

void App::returnRental() {
    ReturnsDesk::returnRental(*this);
}

// The record's row selected and the table focused, as if the operator had picked it.
void App::showSelected(const QString& id) {
    rows();
    const qsizetype row = filteredIDs.indexOf(id);
    if (row >= 0 && table != nullptr && table->selectionModel() != nullptr)
        table->selectionModel()->setCurrentIndex(table->model()->index(int(row), 0),
                                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    focus(table);
}
