#include "ProgramInfo.h"
#include "modes/ModeChecks.h"
#include "modes/Modes.h"

#include "app/App.h"

#include <QApplication>
#include <QTimer>

int runApplication(int argc, char** argv, bool preview) {
    // A picture needs no screen: without a display the preview draws offscreen.
    if (preview)
        drawOffscreenWithoutDisplay();

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("CINEFITA"));
    QGuiApplication::setDesktopFileName(QStringLiteral(CINEFITA_APP_ID));
    QApplication::setQuitOnLastWindowClosed(true);

    App app(QApplication::arguments());
    app.seams.windowOnScreen = !preview;
    if (preview) {
        // The preview never outlives its picture by much, even when launching fails.
        QTimer::singleShot(3000, &application, [] { QCoreApplication::exit(1); });
    }
    QTimer::singleShot(0, &app, &App::launch);
    const int status = application.exec();

    const bool wantedPicture = QApplication::arguments().contains(QStringLiteral("--preview"));
    if (wantedPicture && !app.previewPictureWritten())
        return 1;
    return status;
}
