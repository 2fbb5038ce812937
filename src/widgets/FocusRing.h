#pragma once

#include <QList>
#include <optional>

class QKeyEvent;
class QWidget;

// The keyboard walk shared by the main screen and every dialog: a ring of
// controls stepped by Tab and Shift-Tab, buttons pressed by Return, Enter or
// Space, and the clipboard keys inside text.
namespace FocusRing {

// Gives the view the keyboard focus; a table with rows and no selection selects its first row.
void focus(QWidget* view);

// The ring's index of the control that has the window's focus, or holds it.
std::optional<int> focusedIndex(const QList<QWidget*>& controls, QWidget* inWindow);

// Clipboard keys, Tab ring, button activation; true when the key was used.
bool handleKeyboard(QKeyEvent* event, const QList<QWidget*>& controls, QWidget* inWindow);

// Ctrl+C, X, V, A on the focused text; used even where the text cannot change.
bool handleClipboard(QKeyEvent* event, QWidget* inWindow);

} // namespace FocusRing
