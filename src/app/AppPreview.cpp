#include "app/App.h"

#include <QDir>
#include <QStackedWidget>
#include <QTimer>
#include <cstdio>

void App::schedulePreview() {
    QTimer::singleShot(800, this, [this] {
        enterProgram();
        if (qEnvironmentVariableIsSet("CINEFITA_PREVIEW_HOME"))
            showHome();
        else
            previewFilmForm();
        QTimer::singleShot(500, this, [this] { writePreviewPicture(); });
    });
}

void App::writePreviewPicture() {
    QString path = qEnvironmentVariable("CINEFITA_PREVIEW_PATH");
    if (path.isEmpty())
        path = QDir(QDir::tempPath()).filePath(QStringLiteral("CINEFITA-CRT.png"));
    if (content->grab().save(path, "PNG"))
        previewWritten = true;
    else
        std::fprintf(stderr, "CINEFITA: não foi possível gravar %s\n", path.toLocal8Bit().constData());
    seams.terminate();
}
