#include "app/App.h"

#include "app/FocusRing.h"

#include <QMainWindow>

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
