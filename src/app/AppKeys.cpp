#include "app/App.h"

#include "app/ScanFilter.h"
#include "app/ShellViews.h"
#include "look/DOSButton.h"
#include "look/DOSField.h"
#include "look/DOSSearchField.h"
#include "look/DOSTable.h"
#include "screens/RentalScreen.h"
#include "widgets/MatchList.h"
#include "widgets/RecordForm.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QTableView>
#include <algorithm>
#include <array>

namespace {

bool isFunctionKey(int key) {
    return key >= Qt::Key_F1 && key <= Qt::Key_F9;
}

// The program menu's own keys win over a text field's editing keys (Ctrl+K, Ctrl+E …).
bool isProgramMenuKey(const QKeyEvent* event) {
    if ((event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != Qt::ControlModifier)
        return false;
    switch (event->key()) {
    case Qt::Key_Comma:
    case Qt::Key_E:
    case Qt::Key_B:
    case Qt::Key_K:
    case Qt::Key_Q:
    case Qt::Key_R:
        return true;
    default:
        return false;
    }
}

constexpr Qt::KeyboardModifiers commandKeys = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

// What a function key or a letter opens: a section, then the new film form, or the suggestion.
struct KeyAction {
    int section = -1; // none: the suggestion
    bool newFilm = false;
};

const std::array<std::pair<int, KeyAction>, 8> functionKeys = {{
    {Qt::Key_F1, {Section::films, true}},
    {Qt::Key_F2, {Section::customers}},
    {Qt::Key_F3, {Section::rental}},
    {Qt::Key_F4, {Section::films}},
    {Qt::Key_F5, {Section::rented}},
    {Qt::Key_F6, {Section::reports}},
    {Qt::Key_F7, {}},
    {Qt::Key_F9, {Section::help}}, // F8 has no action
}};

// Opened by a letter when no text is being edited.
const std::array<std::pair<QLatin1StringView, int>, 5> letterSections = {{
    {QLatin1StringView("f"), Section::films},
    {QLatin1StringView("c"), Section::customers},
    {QLatin1StringView("l"), Section::rental},
    {QLatin1StringView("a"), Section::rented}, // late rentals only
    {QLatin1StringView("x"), Section::cash},
}};

// A key press travels from the focus widget up through its parents, and an
// application filter sees it at every step: act only where it starts.
bool isFirstReceiver(const QWidget* widget) {
    const QWidget* focused = widget->window()->focusWidget();
    return widget == (focused != nullptr ? focused : widget->window());
}

} // namespace

// The key filter: every key press of the main window passes here before the
// window's own controls see it.
bool App::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    if (window == nullptr || widget == nullptr || widget->window() != window || !isFirstReceiver(widget))
        return false;
    if (QApplication::activeModalWidget() != nullptr)
        return false; // the dialog has its own key handling
    auto* key = static_cast<QKeyEvent*>(event);

    if (event->type() == QEvent::ShortcutOverride) {
        if (!isProgramMenuKey(key))
            return false;
        key->ignore();
        return true;
    }
    // A barcode scan is taken away before any key of it acts, on the splash too.
    if (scanFilter != nullptr && scanFilter->keyPress(key))
        return true;
    if (showingSplash) {
        if (key->key() == Qt::Key_Escape) {
            exitProgram();
            return true;
        }
        if (isFunctionKey(key->key())) {
            enterProgram();
            return mainKey(key);
        }
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter || key->key() == Qt::Key_Space) {
            enterProgram();
            return true;
        }
        return false;
    }
    return mainKey(key);
}

bool App::mainKey(QKeyEvent* event) {
    const int key = event->key();
    const bool commandHeld = event->modifiers() & commandKeys;
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    QWidget* focused = window != nullptr ? window->focusWidget() : nullptr;

    if (key == Qt::Key_F && (event->modifiers() & Qt::ControlModifier)) {
        focus(search);
        return true;
    }
    if (isFunctionKey(key) && !commandHeld) {
        const auto entry = std::find_if(functionKeys.cbegin(), functionKeys.cend(),
                                        [key](const auto& candidate) { return candidate.first == key; });
        if (entry != functionKeys.cend()) {
            const KeyAction& action = entry->second;
            if (action.section < 0) {
                suggestHouse();
                return true;
            }
            navigate(action.section);
            if (action.newFilm)
                showCreate();
            return true;
        }
    }
    if (key == Qt::Key_F10 && !commandHeld) {
        printReceipt(); // the last rental's or return's slip
        return true;
    }
    if (key == Qt::Key_Escape && screen.history != nullptr) {
        leaveHistory(); // back to the record it was opened from
        return true;
    }
    if (key == Qt::Key_Escape) {
        exitProgram();
        return true;
    }
    if (QWidget* next = ringStepFromShownOnly(event)) {
        focus(next);
        return true;
    }
    if (handleKeyboard(event, mainControls(), window))
        return true;
    // Focus may have moved under a clipboard key; read it again.
    focused = window != nullptr ? window->focusWidget() : nullptr;

    if (!isTextView(focused) && !commandHeld) {
        const QString letter = event->text().toLower();
        const auto shortcut = std::find_if(letterSections.cbegin(), letterSections.cend(),
                                           [&letter](const auto& entry) { return letter == entry.first; });
        if (!letter.isEmpty() && shortcut != letterSections.cend()) {
            navigate(shortcut->second);
            if (letter == QStringLiteral("a")) {
                onlyLate = true;
                render(); // the late list has its own action row
            }
            return true;
        }
    }

    const bool vertical = key == Qt::Key_Down || key == Qt::Key_Up;
    if (focused != nullptr && focused == menuHeading && vertical && !navButtons.isEmpty()) {
        DOSButton* target = key == Qt::Key_Down ? navButtons.first() : navButtons.last();
        if (target->tag() == MenuCommand::newFilm) {
            navigate(Section::films);
            showCreate();
        } else {
            focus(target);
        }
        return true;
    }
    const QList<QWidget*> entries(navButtons.cbegin(), navButtons.cend());
    if (const std::optional<int> current = focusedIndex(entries, window)) {
        const int count = int(navButtons.size());
        if (vertical) {
            DOSButton* target = navButtons[(*current + (key == Qt::Key_Down ? 1 : count - 1)) % count];
            if (target->tag() == MenuCommand::newFilm) {
                navigate(Section::films);
                showCreate();
                focus(target);
            } else if (target->tag() < MenuCommand::suggestion) {
                navigate(target->tag()); // the selection and the screen move together
            } else {
                focus(target);
            }
            return true;
        }
        if (key == Qt::Key_Right) {
            // The form's first control, shown only or editable: the way from the menu into the screen.
            const QList<QWidget*> form = screen.formView != nullptr ? screen.formView->views() : QList<QWidget*>();
            focus(!form.isEmpty() ? form.first() : static_cast<QWidget*>(table));
            return true;
        }
    }
    if (shouldFinalizeRecord(event)) {
        saveRecord();
        return true;
    }
    if (focused != nullptr && focused == table) {
        if (key == Qt::Key_Left) {
            for (DOSButton* entry : navButtons)
                if (entry->tag() == section)
                    focus(entry);
            return true;
        }
        if (enter && !screen.actionButtons.isEmpty()) {
            screen.actionButtons.last()->click();
            return true;
        }
    }

    // The rental screen's drop-downs: Down enters the list under the field, Enter picks.
    if (key == Qt::Key_Down && qobject_cast<QLineEdit*>(focused) != nullptr) {
        MatchList* matches = RentalScreen::fieldTag(focused) == RentalScreen::customerNameTag ? screen.clientMatches
                                                                                              : screen.filmMatches;
        if (matches != nullptr && matches->isVisible()) {
            focus(matches->list());
            return true;
        }
    }
    for (auto [matches, next] : {std::pair{screen.filmMatches, QStringLiteral("client")},
                                 std::pair{screen.clientMatches, QStringLiteral("start")}}) {
        if (enter && matches != nullptr && focused == matches->list()) {
            matches->choose();
            matches->hide();
            if (screen.formView != nullptr)
                focus(screen.formView->fields().value(next));
            return true;
        }
    }
    // Left and Right mean nothing on a button; the toolkit would move the focus
    // along its own widget order, out of sight, so they are kept from it.
    if ((key == Qt::Key_Left || key == Qt::Key_Right) && qobject_cast<QAbstractButton*>(focused) != nullptr)
        return true;
    return false;
}

// Enter in a single-line field of a customer or film form saves it; the synopsis
// is not a single-line field, so there Enter starts a new line.
bool App::shouldFinalizeRecord(const QKeyEvent* event) const {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool plain = !(event->modifiers() & (commandKeys | Qt::ShiftModifier));
    const bool record = section == Section::customers || section == Section::films;
    QWidget* focused = window != nullptr ? window->focusWidget() : nullptr;
    return enter && plain && record && screen.formView != nullptr && qobject_cast<QLineEdit*>(focused) != nullptr;
}
