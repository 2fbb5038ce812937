#include "app/App.h"

#include "look/CRTOverlay.h"
#include "look/DOSButton.h"
#include "look/DOSSearchField.h"
#include "look/DOSTable.h"
#include "records/DateText.h"
#include "screens/AdjustedReturnDesk.h"
#include "screens/CashBook.h"
#include "screens/CounterDocuments.h"
#include "screens/HelpScreen.h"
#include "screens/HomeScreen.h"
#include "screens/ListScreen.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>

void App::enterProgram(QObject*) {
    Q_ASSERT(window != nullptr && workingView != nullptr);
    showingSplash = false;
    section = Section::home;
    content->setCurrentWidget(workingView);
    if (workingView->findChild<CRTOverlay*>(QString(), Qt::FindDirectChildrenOnly) == nullptr) {
        auto* overlay = new CRTOverlay(workingView);
        overlay->setGeometry(workingView->rect());
        overlay->raise();
        overlay->show();
    }
    render();
    focus(menuHeading);
}

void App::navigate(int newSection) {
    if (window != nullptr)
        if (QWidget* focused = window->focusWidget())
            focused->clearFocus();
    section = newSection;
    search->clear(); // the search reacts to the operator's edits only
    editID.reset();
    onlyLate = false;
    render();
    const auto entry = std::find_if(navButtons.cbegin(), navButtons.cend(),
                                    [this](DOSButton* button) { return button->tag() == section; });
    if (entry != navButtons.cend())
        focus(*entry);
    else
        focus(search);
}

void App::changeSection(DOSButton* sender) {
    switch (sender->tag()) {
    case MenuCommand::newFilm:
        navigate(Section::films);
        showCreate();
        break;
    case MenuCommand::suggestion:
        suggestHouse();
        break;
    case MenuCommand::exit:
        exitProgram();
        break;
    default:
        navigate(sender->tag());
    }
}

void App::showHome() {
    navigate(Section::home);
    focus(menuHeading);
}

void App::showCash() {
    navigate(Section::cash);
}

void App::showHelp() {
    navigate(Section::help);
}

void App::showList() {
    editID.reset();
    render();
    focus(table);
}

// ---- Drawing the body ----------------------------------------------------------

QVBoxLayout* App::bodyLayout() const {
    return static_cast<QVBoxLayout*>(body->layout());
}

QList<QWidget*> App::bodyViews() const {
    QList<QWidget*> views;
    QVBoxLayout* stack = bodyLayout();
    for (int i = 0; i < stack->count(); ++i)
        if (QWidget* view = stack->itemAt(i)->widget())
            views.append(view);
    return views;
}

void App::clearBody() {
    QVBoxLayout* stack = bodyLayout();
    while (QLayoutItem* item = stack->takeAt(0)) {
        if (QWidget* view = item->widget()) {
            // The list table outlives every screen that shows it.
            if (table != nullptr && (view == table || view->isAncestorOf(table)))
                table->setParent(nullptr);
            // A button of this screen may be the sender of the action that redraws it.
            view->hide();
            view->deleteLater();
        }
        delete item;
    }
}

// Every screen starts from an empty body and no screen object: none sees another's widgets.
void App::clearScreen() {
    clearBody();
    screen = {};
    rental = nullptr;
    record = nullptr;
    if (list != nullptr)
        list->deleteLater(); // its widgets are gone with the body; it may be what called
    list = nullptr;
}

void App::render() {
    Q_ASSERT(window != nullptr && menuHeading != nullptr);
    window->setWindowTitle(QStringLiteral("CINEFITA — ") + locadoraName());
    brand->setText(locadoraName().toUpper());
    status->setText(dateText(seams.clock()));

    for (DOSButton* entry : navButtons) {
        entry->setOn(entry->tag() == section);
        entry->update();
    }
    clearScreen();
    menuHeading->setOn(section == Section::home);
    menuHeading->update();

    switch (section) {
    case Section::home:
        HomeScreen::show(*this);
        return;
    case Section::help:
        HelpScreen::show(*this);
        return;
    case Section::rental:
        rentalScreen();
        return;
    default:
        break;
    }

    const ListScreen::Commands commands{
        .create = std::bind_front(&App::showCreate, this),
        .importCSV = std::bind_front(&App::importFilmCSV, this),
        .exportCSV = std::bind_front(&App::exportCSV, this),
        .select = std::bind_front(&App::selectRecord, this),
        .edit = std::bind_front(&App::editRecordFromList, this),
        .remove = std::bind_front(&App::deleteSelected, this),
        .printReport = std::bind_front(&App::printReport, this),
        .rentalDetails = std::bind_front(&App::selectRental, this),
        .returnRental = std::bind_front(&App::returnRental, this),
        .cashEntry = std::bind_front(&App::cashEntry, this),
        .overdueNotices = [this] { CounterDocuments::printOverdueNotices(*this); },
        .cashClosing = [this] { CashBook::closing(*this); },
        .adjustedReturn = [this] { AdjustedReturnDesk::adjustedReturn(*this); },
    };
    list = new ListScreen(*this, section, {alphabeticalFilms, alphabeticalClients, selectedGenre, onlyLate}, commands,
                          this);
    screen.createButton = list->createButton();
    screen.sortButton = list->sortButton();
    screen.importButton = list->importButton();
    screen.genrePopup = list->genrePopup();
}
