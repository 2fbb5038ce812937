#include "app/App.h"

#include "look/DOSButton.h"
#include "look/DOSSearchField.h"
#include "look/DOSTable.h"

#include <QMainWindow>
#include <functional>

// A record's history takes the list table over: columns() and rows() answer from
// it while it is on show, so the search, the keys and the CSV export need nothing
// of their own.

void App::historyScreen(const QString& id) {
    if (window != nullptr)
        if (QWidget* focused = window->focusWidget())
            focused->clearFocus();
    clearScreen();
    for (DOSButton* entry : navButtons) {
        entry->setOn(entry->tag() == section);
        entry->update();
    }
    search->clear(); // the list's search does not carry into the history
    editID = id;
    screen.history = new HistoryScreen(*this, section, id);
    screen.history->show({std::bind_front(&App::leaveHistory, this), std::bind_front(&App::exportCSV, this)});
    focus(table);
}

void App::leaveHistory() {
    if (screen.history == nullptr)
        return;
    const QString id = screen.history->recordID();
    search->clear();
    editID = id;
    recordScreen(id);
}
