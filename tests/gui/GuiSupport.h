#pragma once

#include "app/App.h"
#include "look/DOSButton.h"
#include "look/DOSField.h"
#include "storage/LocalDatabase.h"
#include "widgets/RecordForm.h"
#include "widgets/StyledDialog.h"
#include "widgets/WrappingSynopsisView.h"

#include <QApplication>
#include <QMainWindow>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>
#include <list>
#include <memory>

// What a styled dialog showed before the test answered it.
struct SeenDialog {
    QString title;
    QString text;
    QStringList buttons;
};

// Waits for the next styled dialog to run modally, notes what it shows and
// answers it with the given action, from inside the dialog's own event loop.
class DialogAnswerer : public QObject {
public:
    using Answer = std::function<void(StyledDialog*)>;

    explicit DialogAnswerer(Answer answer) : m_answer(std::move(answer)) {
        connect(&m_poll, &QTimer::timeout, this, [this] { poll(); });
        m_poll.start(20);
    }

    bool answered() const { return m_answered; }
    const SeenDialog& seen() const { return m_seen; }

    static Answer pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        return [key, modifiers](StyledDialog* dialog) {
            QWidget* target = dialog->focusWidget() != nullptr ? dialog->focusWidget() : dialog;
            QTest::keyClick(target, key, modifiers);
        };
    }
    static Answer clickButton(int index) {
        return [index](StyledDialog* dialog) {
            dialog->buttons().at(index)->click();
        };
    }

private:
    void poll() {
        auto* dialog = qobject_cast<StyledDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || !dialog->isVisible())
            return;
        m_poll.stop();
        m_seen.title = dialog->title();
        if (WrappingSynopsisView* box = dialog->textBox())
            m_seen.text = box->toPlainText();
        for (auto* button : dialog->buttons())
            m_seen.buttons.append(button->text());
        m_answered = true;
        QPointer<StyledDialog> guard(dialog);
        m_answer(dialog);
        // A failed check inside the answer must not leave the test waiting on the dialog.
        if (QTest::currentTestFailed() && guard != nullptr && guard->isVisible())
            guard->done(abortAnswer);
    }

    Answer m_answer;
    QTimer m_poll;
    bool m_answered = false;
    SeenDialog m_seen;
};

// Answers the dialogs to come, one answer each, in order, and notes their titles.
class DialogSequence {
public:
    explicit DialogSequence(QList<DialogAnswerer::Answer> answers) : m_answers(std::move(answers)) { next(); }
    const QStringList& titles() const { return m_titles; }

private:
    void next() {
        if (m_step >= m_answers.size())
            return;
        DialogAnswerer::Answer answer = m_answers.at(m_step++);
        // The next one waits before this dialog closes, so no dialog goes unanswered.
        m_waiting.push_back(std::make_unique<DialogAnswerer>([this, answer](StyledDialog* dialog) {
            m_titles.append(dialog->title());
            next();
            answer(dialog);
        }));
    }

    QList<DialogAnswerer::Answer> m_answers;
    qsizetype m_step = 0;
    std::list<std::unique_ptr<DialogAnswerer>> m_waiting;
    QStringList m_titles;
};

// A controller over a test data folder with a fixed clock; quitting is only noted.
struct TestApp {
    explicit TestApp(const QString& folder, Instant now = Instant{800000000}) : app(std::make_unique<App>()) {
        app->folder = folder;
        app->seams.clock = [now] {
            return now;
        };
        app->seams.terminate = [this] {
            ++terminations;
        };
    }

    App* operator->() const { return app.get(); }

    // Launches and waits until the window can take keys.
    bool launch() {
        app->launch();
        return app->window != nullptr && QTest::qWaitForWindowActive(app->window);
    }

    std::unique_ptr<App> app;
    int terminations = 0;
};

// Types text into a widget key by key (keyClicks knows Latin-1 only).
inline void typeText(QWidget* target, const QString& text) {
    for (QChar letter : text)
        QTest::sendKeyEvent(QTest::Click, target, Qt::Key_unknown, QString(letter), Qt::NoModifier);
}

// Fills a dialog's form fields in order, by keys, and confirms it with Return.
inline DialogAnswerer::Answer fillForm(const QStringList& values) {
    return [values](StyledDialog* dialog) {
        for (qsizetype i = 0; i < values.size(); ++i) {
            if (i > 0)
                QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
            QTest::keyClick(dialog->focusWidget(), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(dialog->focusWidget(), Qt::Key_Backspace);
            typeText(dialog->focusWidget(), values.at(i));
        }
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
    };
}

// A data folder holding a store, and the program over it.
struct ShopOnDisk {
    explicit ShopOnDisk(Instant now = Instant{800000000}) : app(dir.path(), now) {}

    // Saves the store and launches on the splash.
    bool launch(const Store& store) {
        LocalDatabase(dir.filePath("cinefita.sqlite")).save(store);
        return app.launch();
    }
    Store saved() const { return *LocalDatabase(dir.filePath("cinefita.sqlite")).load(); }
    DOSField* field(const QString& key) const { return app->screen.formView->fields().value(key); }
    // The shown button with that title: a menu entry, a tab or an action; null when none.
    DOSButton* button(const QString& title) const {
        for (DOSButton* candidate : app->navButtons + app->screen.tabs + app->screen.actionButtons)
            if (candidate->text() == title)
                return candidate;
        return nullptr;
    }

    // The operator at the keyboard: every key goes to the focused widget of the real window.
    QWidget* focused() const { return app->window->focusWidget(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::keyClick(focused() != nullptr ? focused() : app->window, key, modifiers);
        QCoreApplication::processEvents(); // as between two real key presses: new views are shown
    }
    void type(const QString& text) const {
        QTest::keyClicks(focused(), text);
        QCoreApplication::processEvents();
    }
    bool tabTo(const QWidget* control) const {
        for (int step = 0; step < 40 && focused() != control; ++step)
            press(Qt::Key_Tab);
        return focused() == control;
    }

    QTemporaryDir dir;
    TestApp app;
};
