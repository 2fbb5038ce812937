#pragma once

#include "app/App.h"
#include "look/DOSButton.h"
#include "look/DOSField.h"
#include "widgets/RecordForm.h"
#include "widgets/StyledDialog.h"
#include "widgets/WrappingSynopsisView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QScrollBar>
#include <QTimer>
#include <cstdio>
#include <functional>

// What the editing test's checks share: the operator at the keyboard, the answer to
// the next dialog, and the groups of checks, each in the file of its subject.
namespace editingTest {

inline void pass(const char* line) {
    std::printf("%s\n", line);
    std::fflush(stdout);
}

inline const QString longSynopsis =
    QStringLiteral("Um tubarão assusta a praia de uma pequena cidade no verão. ").repeated(30);

// The operator at the keyboard: each key goes to the focused widget of the real
// window, through the application's key filter, as a key pressed and released.
class Operator {
public:
    explicit Operator(App& app) : m_app(app) {}

    QWidget* focused() const { return m_app.window->focusWidget(); }

    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {}) {
        QWidget* target = focused() != nullptr ? focused() : m_app.window;
        QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
        QApplication::sendEvent(target, &press);
        QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
        QApplication::sendEvent(target, &release);
        QCoreApplication::processEvents();
    }
    void type(const QString& text) {
        for (QChar letter : text)
            key(letter.isLetter() ? Qt::Key_A + (letter.toUpper().unicode() - 'A') : Qt::Key_unknown, Qt::NoModifier,
                QString(letter));
    }
    void replaceText(const QString& text) {
        key(Qt::Key_A, Qt::ControlModifier);
        type(text);
    }
    // Tab until the control has the focus; false when the ring never reaches it.
    bool tabTo(const QWidget* control, bool backwards = false) {
        for (int step = 0; step < 40 && focused() != control; ++step)
            key(backwards ? Qt::Key_Backtab : Qt::Key_Tab, backwards ? Qt::ShiftModifier : Qt::NoModifier);
        return focused() == control;
    }
    DOSField* field(const QString& name) const {
        return m_app.screen.formView != nullptr ? m_app.screen.formView->fields().value(name) : nullptr;
    }
    DOSButton* action(const QString& title) const {
        for (DOSButton* button : m_app.screen.actionButtons)
            if (button->text() == title)
                return button;
        return nullptr;
    }
    QStringList actionTitles() const {
        QStringList titles;
        for (DOSButton* button : m_app.screen.actionButtons)
            titles.append(button->text());
        return titles;
    }
    QString rowsText() {
        QStringList lines;
        for (const QStringList& row : m_app.rows())
            lines.append(row.join(QLatin1Char('|')));
        return lines.join(QLatin1Char('\n'));
    }

private:
    App& m_app;
};

// Answers the next styled dialog from inside its own event loop.
class DialogAnswer : public QObject {
public:
    explicit DialogAnswer(std::function<void(StyledDialog*)> answer) : m_answer(std::move(answer)) {
        connect(&m_poll, &QTimer::timeout, this, [this] {
            auto* dialog = qobject_cast<StyledDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || !dialog->isVisible())
                return;
            m_poll.stop();
            seen = dialog->size();
            if (WrappingSynopsisView* box = dialog->textBox())
                scrolls = box->verticalScrollBar()->maximum() > 0;
            answered = true;
            m_answer(dialog);
        });
        m_poll.start(10);
    }
    static void pressReturn(StyledDialog* dialog) {
        QWidget* target = dialog->focusWidget() != nullptr ? dialog->focusWidget() : dialog;
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QApplication::sendEvent(target, &press);
    }

    bool answered = false;
    bool scrolls = false;
    QSize seen;

private:
    std::function<void(StyledDialog*)> m_answer;
    QTimer m_poll;
};

// EditingFieldChecks.cpp: typing, the clipboard and Enter in the record forms.
void copyAndPaste(App& app, Operator& op);
void synopsisWraps(App& app, Operator& op);
void enterRules(App& app, Operator& op);
void customerForm(App& app, Operator& op);
void typingAndLookups(App& app, Operator& op);

// EditingScreenChecks.cpp: search, the rental's APAGAR, the menu, dialogs and prints.
void liveSearch(App& app, Operator& op);
void rentalClear(App& app, Operator& op, const QString& databasePath);
void menuArrows(App& app, Operator& op);
void boundedDialogs(App& app, Operator& op);
void recordButtons(App& app, Operator& op, const QStringList& printed);

} // namespace editingTest
