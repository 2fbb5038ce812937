#include "widgets/FocusRing.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace {

constexpr Qt::KeyboardModifiers commandKeys = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

QWidget* firstResponder(QWidget* inWindow) {
    return inWindow != nullptr ? inWindow->window()->focusWidget() : QApplication::focusWidget();
}

} // namespace

namespace FocusRing {

void focus(QWidget* view) {
    if (view == nullptr)
        return;
    view->setFocus(Qt::OtherFocusReason);
    // A field reached by the ring holds its whole text selected, so typing replaces it.
    if (auto* field = qobject_cast<QLineEdit*>(view))
        field->selectAll();
    if (auto* items = qobject_cast<QAbstractItemView*>(view)) {
        QAbstractItemModel* model = items->model();
        QItemSelectionModel* selection = items->selectionModel();
        if (model != nullptr && selection != nullptr && !selection->hasSelection() && model->rowCount() > 0)
            selection->setCurrentIndex(model->index(0, 0),
                                       QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    view->update();
}

std::optional<int> focusedIndex(const QList<QWidget*>& controls, QWidget* inWindow) {
    QWidget* responder = firstResponder(inWindow);
    if (responder == nullptr)
        return std::nullopt;
    for (int i = 0; i < controls.size(); ++i) {
        QWidget* control = controls[i];
        if (control != nullptr && (control == responder || control->isAncestorOf(responder)))
            return i;
    }
    return std::nullopt;
}

bool handleKeyboard(QKeyEvent* event, const QList<QWidget*>& controls, QWidget* inWindow) {
    if (handleClipboard(event, inWindow))
        return true;
    if ((event->modifiers() & commandKeys) || controls.isEmpty())
        return false;
    const std::optional<int> current = focusedIndex(controls, inWindow);
    const int count = int(controls.size());
    const int key = event->key();

    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
        const bool backwards = key == Qt::Key_Backtab || (event->modifiers() & Qt::ShiftModifier);
        const int next = current ? (*current + (backwards ? count - 1 : 1)) % count : 0;
        focus(controls[next]);
        return true;
    }
    if ((key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) && current) {
        if (auto* pressable = qobject_cast<QAbstractButton*>(controls[*current])) {
            pressable->click();
            return true;
        }
    }
    return false;
}

bool handleClipboard(QKeyEvent* event, QWidget* inWindow) {
    if ((event->modifiers() & commandKeys) != Qt::ControlModifier)
        return false;
    const int key = event->key();
    if (key != Qt::Key_C && key != Qt::Key_X && key != Qt::Key_V && key != Qt::Key_A)
        return false;
    QWidget* responder = firstResponder(inWindow);

    // Consumed even where the text cannot change, so the keys never act elsewhere.
    auto act = [key](auto* text) {
        const bool editable = !text->isReadOnly();
        if (key == Qt::Key_C)
            text->copy();
        else if (key == Qt::Key_X && editable)
            text->cut();
        else if (key == Qt::Key_V && editable)
            text->paste();
        else if (key == Qt::Key_A)
            text->selectAll();
        return true;
    };
    if (auto* line = qobject_cast<QLineEdit*>(responder))
        return act(line);
    if (auto* plain = qobject_cast<QPlainTextEdit*>(responder))
        return act(plain);
    if (auto* rich = qobject_cast<QTextEdit*>(responder))
        return act(rich);
    return false;
}

} // namespace FocusRing
