// The program's own start-up, rental and return on a large store, measured in
// this process on the offscreen platform as the operator meets them: keys go to
// the focused widget or the open dialog, the event loop and the program's timers
// run throughout, and a second of idle separates the operations.
#include "bench_app.h"

#include "Timing.h"

#include "app/App.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <functional>
#include <memory>

namespace {

constexpr int idleMs = 1000;

// Ends the running event loop. QCoreApplication::quit would close the window too.
void leave() {
    QCoreApplication::exit(0);
}

// Notes the first paint of the window and each paint of a list once `awaited` holds.
class Paints : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (event->type() != QEvent::Paint || widget == nullptr || !widget->window()->isVisible())
            return false;
        if (!firstFrame) {
            firstFrame = true;
            QTimer::singleShot(0, qApp, [this] { onFirstFrame(); }); // after the rest of this frame
        }
        if (awaited && qobject_cast<QAbstractItemView*>(widget->parentWidget()) != nullptr && awaited()) {
            awaited = nullptr;
            drawnMs = since(*timer);
            QTimer::singleShot(0, qApp, [this] { onList(); });
        }
        return false;
    }
    bool firstFrame = false;
    std::function<void()> onFirstFrame = [] {
    };
    std::function<bool()> awaited; // set while an operation waits for its list
    std::function<void()> onList;
    const QElapsedTimer* timer = nullptr; // started when the operation's key was sent
    double drawnMs = 0;
};

// What the operator types into: a dialog first, then the focused widget.
QWidget* keyTarget(App& app) {
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal->focusWidget() != nullptr ? modal->focusWidget() : modal;
    if (QWidget* focused = QApplication::focusWidget())
        return focused;
    return app.window;
}

void press(App& app, Qt::Key key) {
    QTest::keyClick(keyTarget(app), key);
    QCoreApplication::processEvents();
}

void type(App& app, const QString& text) {
    for (QChar letter : text)
        QTest::sendKeyEvent(QTest::Click, keyTarget(app), Qt::Key_unknown, QString(letter), Qt::NoModifier);
}

// Tab until the focused widget is the one wanted; false when the ring has none.
bool tabTo(App& app, const std::function<bool(QWidget*)>& wanted) {
    for (int step = 0; step < 60; ++step) {
        if (QApplication::focusWidget() != nullptr && wanted(QApplication::focusWidget()))
            return true;
        press(app, Qt::Key_Tab);
    }
    return false;
}

std::function<bool(QWidget*)> fieldTagged(int tag) {
    return [tag](QWidget* widget) {
        return widget->property("tag").toInt() == tag;
    };
}

std::function<bool(QWidget*)> buttonTitled(const QString& title) {
    return [title](QWidget* widget) {
        auto* button = qobject_cast<QAbstractButton*>(widget);
        return button != nullptr && button->text() == title;
    };
}

bool isList(QWidget* widget) {
    return qobject_cast<QAbstractItemView*>(widget) != nullptr;
}

// Steps run one per timer shot; the next is scheduled before a step runs, so
// steps keep coming inside a dialog that a step opens. A step that waits for a
// list to be drawn leaves the scheduling to the paint.
class Script {
public:
    struct Step {
        int delayMs;
        std::function<void()> run;
        bool waitsForList = false;
    };
    explicit Script(Paints& paints) : paints_(paints) {
        paints_.onList = [this] {
            go();
        };
    }
    void add(int delayMs, std::function<void()> run, bool waitsForList = false) {
        steps_.append({delayMs, std::move(run), waitsForList});
    }
    void go() {
        if (failed || next_ >= steps_.size()) {
            leave();
            return;
        }
        const qsizetype index = next_++;
        QTimer::singleShot(steps_[index].delayMs, qApp, [this, index] {
            if (!steps_[index].waitsForList)
                go();
            steps_[index].run();
        });
    }
    bool failed = false;

private:
    Paints& paints_;
    QList<Step> steps_;
    qsizetype next_ = 0;
};

} // namespace

AppTimes appMillis(const QString& dataFolder, int rounds) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "cinefita_bench";
    static char* argv[] = {name, nullptr};
    QApplication application(argc, argv);
    Paints paints;
    application.installEventFilter(&paints);
    AppTimes times;
    QElapsedTimer timer;
    paints.timer = &timer;
    QTimer limit; // never hang the bench
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, &application, [&] {
        limit.setProperty("expired", true);
        leave();
    });
    const auto newApp = [&] {
        auto app = std::make_unique<App>();
        app->folder = dataFolder;
        app->seams.terminate = [] {
        };
        return app;
    };

    // Start-up, each time a new controller on the same folder, after a second of idle.
    QList<double> startups;
    std::unique_ptr<App> app;
    for (int round = 0; round < rounds; ++round) {
        paints.firstFrame = false;
        bool shown = false;
        paints.onFirstFrame = [&] {
            shown = true;
            leave();
        };
        QTimer::singleShot(idleMs, &application, leave);
        application.exec(); // idle
        app.reset();        // the last one stays for the operations below
        timer.start();
        app = newApp();
        QTimer::singleShot(0, app.get(), &App::launch);
        limit.start(20000);
        application.exec();
        limit.stop();
        if (!shown || app->window == nullptr)
            return times;
        startups.append(since(timer));
    }
    times.startupMs = median(startups);

    app->window->activateWindow();
    if (!QTest::qWaitForWindowActive(app->window)) // until it takes keys
        return times;

    // Rent film 1 to customer 1, then return it at once answering N, `rounds` times.
    QList<double> rentals, returns;
    Script script(paints);
    const auto check = [&](bool held) {
        if (!held)
            script.failed = true;
    };
    script.add(idleMs, [&] { press(*app, Qt::Key_Return); }); // leaves the splash
    for (int round = 0; round < rounds; ++round) {
        script.add(0, [&] {
            press(*app, Qt::Key_F3);
            press(*app, Qt::Key_Right);
            check(tabTo(*app, fieldTagged(RentalScreen::filmCodeTag)));
            type(*app, QStringLiteral("1"));
            check(tabTo(*app, fieldTagged(RentalScreen::customerCodeTag)));
            type(*app, QStringLiteral("1"));
            check(tabTo(*app, buttonTitled(QStringLiteral("SALVAR"))));
        });
        script.add(
            idleMs,
            [&] {
                const qsizetype before = app->store.rentals.size();
                paints.awaited = [&, before] {
                    return app->store.rentals.size() == before + 1;
                };
                timer.start();
                press(*app, Qt::Key_Space);
            },
            true);
        script.add(0, [&] { rentals.append(paints.drawnMs); });
        script.add(idleMs, [&] {
            check(tabTo(*app, isList));
            press(*app, Qt::Key_Return); // SELECIONAR: the details dialog
        });
        script.add(50, [&] { press(*app, Qt::Key_Return); });     // DEVOLUÇÃO: on to the returns list
        script.add(idleMs, [&] { press(*app, Qt::Key_Return); }); // FINALIZAR: the rewind question
        script.add(
            50,
            [&] {
                paints.awaited = [&] {
                    return app->store.rentals.last().returned.has_value();
                };
                timer.start();
                press(*app, Qt::Key_N);
            },
            true);
        script.add(0, [&] { returns.append(paints.drawnMs); });
    }
    QTimer::singleShot(0, &application, [&] { script.go(); });
    limit.start(rounds * 20000);
    application.exec();
    if (limit.property("expired").toBool())
        script.failed = true;
    application.removeEventFilter(&paints);
    if (script.failed || rentals.size() < rounds || returns.size() < rounds)
        return times;
    times.rentalMs = median(rentals);
    times.returnMs = median(returns);
    return times;
}
