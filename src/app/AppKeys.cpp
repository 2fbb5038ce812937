#include "app/App.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>

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

} // namespace

// The key filter: every key press of the main window passes here before the
// window's own controls see it.
bool App::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    if (window == nullptr || widget == nullptr || widget->window() != window)
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

bool App::mainKey(QKeyEvent*) {
    return false;
}
