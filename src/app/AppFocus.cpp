#include "app/App.h"

#include "app/FocusRing.h"
#include "app/MatchList.h"
#include "app/RecordForm.h"
#include "look/DOSButton.h"
#include "look/DOSPopup.h"
#include "look/DOSSearchField.h"
#include "look/DOSTable.h"

#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QTableView>

namespace {

bool isReadOnlyText(const QWidget* control) {
    if (const auto* line = qobject_cast<const QLineEdit*>(control))
        return line->isReadOnly();
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(control))
        return text->isReadOnly();
    return false;
}

} // namespace

// The controller's ring helpers default to the main window.

void App::focus(QWidget* view, QWidget*) {
    // A widget only ever takes the focus of its own window.
    FocusRing::focus(view);
}

std::optional<int> App::focusedIndex(const QList<QWidget*>& controls, QWidget* inWindow) const {
    return FocusRing::focusedIndex(controls, inWindow != nullptr ? inWindow : window);
}

bool App::handleKeyboard(QKeyEvent* event, const QList<QWidget*>& controls, QWidget* inWindow) {
    return FocusRing::handleKeyboard(event, controls, inWindow != nullptr ? inWindow : window);
}

bool App::handleClipboard(QKeyEvent* event, QWidget* inWindow) {
    return FocusRing::handleClipboard(event, inWindow != nullptr ? inWindow : window);
}

// The main screen's Tab ring, in the order the operator meets the controls.
QList<QWidget*> App::mainControls() const {
    QList<QWidget*> ring;
    const auto shown = [this](const QWidget* view) {
        return view != nullptr && window != nullptr && view->isVisibleTo(window);
    };
    ring.append(menuHeading);
    for (DOSButton* entry : navButtons)
        ring.append(entry);
    ring.append(search);
    for (DOSButton* tab : screen.tabs)
        ring.append(tab);
    // Without it an operator with no mouse could not register a customer.
    if (shown(screen.createButton))
        ring.append(screen.createButton);
    if (shown(screen.importButton))
        ring.append(screen.importButton);
    if (screen.sortButton != nullptr && screen.formView == nullptr)
        ring.append(screen.sortButton);
    if (screen.genrePopup != nullptr)
        ring.append(screen.genrePopup);
    if (screen.formView != nullptr)
        for (QWidget* control : screen.formView->controls())
            if (!isReadOnlyText(control))
                ring.append(control);
    // Record screens take the table off the screen; a ring stop that cannot take focus would stall Tab.
    if (section != Section::rental && section != Section::help && shown(table))
        ring.append(table);
    for (MatchList* matches : {screen.filmMatches, screen.clientMatches})
        if (shown(matches))
            ring.append(matches->list());
    for (DOSButton* action : screen.actionButtons)
        ring.append(action);
    for (DOSButton* footer : footerButtons)
        ring.append(footer);
    if (settingsButton != nullptr)
        ring.append(settingsButton);
    ring.removeAll(nullptr);
    return ring;
}
