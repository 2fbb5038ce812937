#include "app/App.h"

#include "app/MatchList.h"
#include "app/RecordForm.h"
#include "look/DOSField.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QTableView>

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
        return true;
    default:
        return false;
    }
}

constexpr Qt::KeyboardModifiers commandKeys = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

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
    ++keyMapRuns;
    if (isFunctionKey(event->key()) && !(event->modifiers() & commandKeys)) {
        switch (event->key()) {
        case Qt::Key_F1:
            navigate(Section::films);
            showCreate();
            return true;
        case Qt::Key_F2:
            navigate(Section::customers);
            return true;
        case Qt::Key_F3:
            navigate(Section::rental);
            return true;
        case Qt::Key_F4:
            navigate(Section::films);
            return true;
        case Qt::Key_F5:
            navigate(Section::rented);
            return true;
        case Qt::Key_F6:
            navigate(Section::reports);
            return true;
        case Qt::Key_F7:
            suggestHouse();
            return true;
        case Qt::Key_F9:
            navigate(Section::help);
            return true;
        default:
            break; // F8 has no action
        }
    }

    // The rental screen's drop-downs: Down enters the list under the field, Enter picks.
    QWidget* focused = window != nullptr ? window->focusWidget() : nullptr;
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Down && qobject_cast<QLineEdit*>(focused) != nullptr) {
        MatchList* matches = fieldTag(focused) == customerNameTag ? screen.clientMatches : screen.filmMatches;
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
    return false;
}
