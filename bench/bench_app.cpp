// The program's own start-up on a large store, measured in this process on the
// offscreen platform: from creating the controller to its first painted frame.
#include "bench_app.h"

#include "app/App.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

namespace {

// Quits the event loop once the first frame has been painted.
class FirstFrame : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (!painted && event->type() == QEvent::Paint && widget != nullptr && widget->window()->isVisible()) {
            painted = true;
            QTimer::singleShot(0, qApp, &QCoreApplication::quit); // after the rest of this frame
        }
        return false;
    }
    bool painted = false;
};

} // namespace

std::optional<double> startupMillis(const QString& dataFolder) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("CINEFITA_DATA_DIR", dataFolder.toLocal8Bit());
    static int argc = 1;
    static char name[] = "cinefita_bench";
    static char* argv[] = {name, nullptr};
    QApplication application(argc, argv);
    FirstFrame firstFrame;
    application.installEventFilter(&firstFrame);
    QTimer::singleShot(10000, &application, &QCoreApplication::quit); // never hang the bench

    QElapsedTimer timer;
    timer.start();
    App app;
    QTimer::singleShot(0, &app, &App::launch);
    application.exec();
    const double elapsed = double(timer.nsecsElapsed()) / 1e6;
    if (!firstFrame.painted || app.database == nullptr) // no frame, or the launch failed
        return std::nullopt;
    return elapsed;
}
