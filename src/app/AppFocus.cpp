#include "app/App.h"

#include "look/DOSButton.h"
#include "look/DOSPopup.h"
#include "look/DOSSearchField.h"
#include "look/DOSTable.h"
#include "widgets/FocusRing.h"
#include "widgets/MatchList.h"
#include "widgets/RecordForm.h"

#include <QKeyEvent>
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

void App::focus(QWidget* view) {
    // A widget only ever takes the focus of its own window.
    FocusRing::focus(view);
}

std::optional<int> App::focusedIndex(const QList<QWidget*>& controls, QWidget* inWindow) const {
    return FocusRing::focusedIndex(controls, inWindow != nullptr ? inWindow : window);
}

bool App::handleKeyboard(QKeyEvent* event, const QList<QWidget*>& controls, QWidget* inWindow) {
    return FocusRing::handleKeyboard(event, controls, inWindow != nullptr ? inWindow : window);
}

// The main screen's Tab ring, in the order the operator meets the controls.
QList<QWidget*> App::mainControls() const {
    return ringControls(false);
}

// Tab from a form control the ring leaves out (a field only shown, reached with
// Right from the menu) goes on to the ring's next control after it.
QWidget* App::ringStepFromShownOnly(const QKeyEvent* event) const {
    const int key = event->key();
    if ((key != Qt::Key_Tab && key != Qt::Key_Backtab) ||
        (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)))
        return nullptr;
    const QList<QWidget*> ring = ringControls(false);
    const QList<QWidget*> all = ringControls(true);
    if (focusedIndex(ring, window))
        return nullptr;
    const std::optional<int> from = focusedIndex(all, window);
    if (!from)
        return nullptr;
    const bool backwards = key == Qt::Key_Backtab || (event->modifiers() & Qt::ShiftModifier);
    const int count = int(all.size());
    for (int step = 1; step < count; ++step) {
        QWidget* candidate = all[(*from + (backwards ? count - step : step)) % count];
        if (ring.contains(candidate))
            return candidate;
    }
    return nullptr;
}

QList<QWidget*> App::ringControls(bool shownOnlyToo) const {
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
        for (QWidget* control : shownOnlyToo ? screen.formView->views() : screen.formView->controls())
            if (shownOnlyToo || !isReadOnlyText(control))
                ring.append(control);
    if (shown(screen.basketList))
        ring.append(screen.basketList);
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
