#include "app/App.h"

#include "lists/ListGenres.h"
#include "look/DOS.h"
#include "look/DOSButton.h"
#include "look/DOSField.h"
#include "look/DOSHeader.h"
#include "look/DOSPopup.h"
#include "look/DOSRowDelegate.h"
#include "look/DOSSearchField.h"
#include "look/DOSTable.h"
#include "widgets/ListModel.h"
#include "widgets/RecordForm.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

// The list screens of sections 1 to 6: one table over rows() and the controls that narrow it.

QStringList App::columns() const {
    return screen.history != nullptr ? screen.history->columns() : listColumns(section);
}

ListFilter App::listFilter() const {
    return {section, selectedGenre, alphabeticalFilms, alphabeticalClients, onlyLate};
}

QList<QStringList> App::rows() {
    if (screen.history != nullptr) {
        const HistoryScreen::Shown& shown = screen.history->rows(search != nullptr ? search->text() : QString());
        filteredIDs = shown.ids;
        return shown.cells;
    }
    const ListCache::Shown& shown =
        listCache.rows(store, listFilter(), search != nullptr ? search->text() : QString(), seams.clock());
    filteredIDs = shown.ids;
    return shown.cells;
}

std::optional<Film> App::film(const QString& id) const {
    const auto found =
        std::find_if(store.films.cbegin(), store.films.cend(), [&](const Film& f) { return f.id == id; });
    return found != store.films.cend() ? std::make_optional(*found) : std::nullopt;
}

std::optional<Customer> App::customer(const QString& id) const {
    const auto found =
        std::find_if(store.customers.cbegin(), store.customers.cend(), [&](const Customer& c) { return c.id == id; });
    return found != store.customers.cend() ? std::make_optional(*found) : std::nullopt;
}

void App::showTable() {
    if (listModel == nullptr) {
        listModel =
            new ListModel({[this] { return columns(); }, [this] { return rows(); },
                           [this] {
                               return screen.history != nullptr ? screen.history->generation() : listCache.generation();
                           }},
                          table);
        table->setModel(listModel);
        table->rowDelegate()->setFramesCells(true);
        table->header()->setMinimumSectionSize(65);
        // The widths are starting widths: the last column takes what is left, as a toolkit table does.
        table->header()->setStretchLastSection(true);
    }
    table->clearSelection();
    listModel->reload();
    const QStringList headers = columns();
    for (int i = 0; i < headers.size(); ++i)
        table->setColumnWidth(i, screen.history != nullptr ? HistoryScreen::columnWidth(headers.at(i))
                                                           : listColumnWidth(headers.at(i)));

    auto* frame = new QWidget;
    auto* holder = new QVBoxLayout(frame);
    holder->setContentsMargins(0, 0, 0, 0);
    holder->addWidget(table);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    table->show(); // taken out of the previous screen's frame, which hid it
    frame->setMinimumHeight(300);
    addBody(frame, 1);
}

void App::addListTable() {
    showTable();
}

void App::reloadList() {
    reloadTable();
}

void App::reloadTable() {
    table->clearSelection();
    if (listModel != nullptr)
        listModel->reload();
}

std::optional<QString> App::selected() {
    rows();
    const QModelIndexList chosen =
        table->selectionModel() != nullptr ? table->selectionModel()->selectedRows() : QModelIndexList();
    const int row = chosen.isEmpty() ? -1 : chosen.first().row();
    if (row >= 0 && row < filteredIDs.size())
        return filteredIDs.at(row);
    alert(QStringLiteral("Selecione um registro"), QStringLiteral("Use as setas ou clique na linha desejada."));
    return std::nullopt;
}

void App::searchChanged() {
    // Section 0 has no list: the search types into the rental form's film field instead.
    if (section == Section::rental) {
        DOSField* film = screen.formView != nullptr ? screen.formView->fields().value(QStringLiteral("film")) : nullptr;
        if (film != nullptr) {
            film->setText(search->text());
            controlTextDidChange(film);
        }
        return;
    }
    if (screen.formView == nullptr)
        reloadTable();
}

void App::showCreate() {
    editID.reset();
    recordScreen(std::nullopt);
}

void App::selectRecord() {
    if (const std::optional<QString> id = selected()) {
        editID = id;
        recordScreen(id);
    }
}

void App::editRecordFromList() {
    if (const std::optional<QString> id = selected()) {
        editID = id;
        recordScreen(id);
        enableEdit();
    }
}
