// The scan as the operator meets it: the program running on the shop, a scanner's
// keys sent to its window, and the time from the scan's last key (its Return) to the
// rewind question on screen, or to the rental screen drawn.
#include "Timing.h"
#include "app/App.h"
#include "records/Codes.h"
#include "screens/RentalScreen.h"
#include "storage/LocalDatabase.h"
#include "widgets/StyledDialog.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMainWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>

namespace {

// Notes when the first styled dialog is shown and cancels it, as Escape would.
class DialogWatch : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show)
            if (auto* dialog = qobject_cast<StyledDialog*>(watched)) {
                if (shownMs < 0)
                    shownMs = double(timer.nsecsElapsed()) / 1e6;
                QTimer::singleShot(0, dialog, [dialog] { dialog->done(abortAnswer); });
            }
        return false;
    }
    QElapsedTimer timer;
    double shownMs = -1;
};

qint64 stamp = 1000;

void sendKey(App& app, int key, const QString& text) {
    stamp += 4;
    QWidget* target = app.window->focusWidget() != nullptr ? app.window->focusWidget() : app.window;
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    press.setTimestamp(quint64(stamp));
    QApplication::sendEvent(target, &press);
}

} // namespace

// Runs the program on the store in this process, on the offscreen platform.
void screenTimes(const Store& store, const QStringList& returns, const QStringList& shelf) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir folder;
    LocalDatabase(folder.filePath("cinefita.sqlite")).save(store);
    qputenv("CINEFITA_DATA_DIR", folder.path().toLocal8Bit());
    static int argc = 1;
    static char name[] = "cinefita_bench_counter";
    static char* argv[] = {name, nullptr};
    QApplication application(argc, argv);
    App app;
    app.folder = folder.path();
    app.launch();
    if (app.window == nullptr || app.database == nullptr) {
        std::printf("the program did not start\n");
        return;
    }
    app.blinkTimer->stop();
    app.enterProgram();
    DialogWatch watch;
    application.installEventFilter(&watch);

    // The scan's keys, all but the last delivered before the clock starts.
    const auto scan = [&](const QString& code) {
        stamp += 1000;
        for (QChar letter : code)
            sendKey(app, letter.toUpper().unicode(), QString(letter));
        QCoreApplication::processEvents();
    };
    QList<double> toDialog, toScreen;
    for (const QString& code : returns) {
        app.navigate(Section::home);
        scan(code);
        watch.shownMs = -1;
        watch.timer.start();
        sendKey(app, Qt::Key_Return, QStringLiteral("\r"));
        QCoreApplication::processEvents();
        if (watch.shownMs >= 0)
            toDialog.append(watch.shownMs);
    }
    for (const QString& code : shelf) {
        app.rentalFilm.reset();
        app.rentalTapes.clear();
        app.navigate(Section::home);
        scan(code);
        QElapsedTimer timer;
        timer.start();
        sendKey(app, Qt::Key_Return, QStringLiteral("\r"));
        QCoreApplication::processEvents();
        app.window->repaint();
        if (app.section == Section::rental && app.rentalFilm)
            toScreen.append(double(timer.nsecsElapsed()) / 1e6);
    }
    application.removeEventFilter(&watch);
    std::printf("scan to rewind question shown: median %.2f ms over %lld of %lld scans\n", median(toDialog),
                qlonglong(toDialog.size()), qlonglong(returns.size()));
    std::printf("scan to rental screen drawn:   median %.2f ms over %lld of %lld scans\n", median(toScreen),
                qlonglong(toScreen.size()), qlonglong(shelf.size()));
}
