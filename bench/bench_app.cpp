// The program's own start-up, rental and return on a large store, measured in
// this process on the offscreen platform.
#include "bench_app.h"

#include "app/App.h"
#include "app/RecordForm.h"
#include "app/StyledDialog.h"
#include "look/DOSButton.h"
#include "look/DOSField.h"
#include "look/DOSTable.h"
#include "storage/LocalDatabase.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QItemSelectionModel>
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

double since(const QElapsedTimer& timer) {
    return double(timer.nsecsElapsed()) / 1e6;
}

// Types a code into a rental field as the operator would, so the screen resolves it.
void typeCode(App& app, const QString& key, const QString& code) {
    DOSField* field = app.screen.formView->fields().value(key);
    field->setText(code);
    app.controlTextDidChange(field);
}

// Presses the dialog's button as soon as it is shown.
void answerNextDialog(int button) {
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, poll, [poll, button] {
        if (auto* dialog = qobject_cast<StyledDialog*>(QApplication::activeModalWidget())) {
            poll->deleteLater();
            poll->stop();
            dialog->buttons().at(button)->click();
        }
    });
    poll->start(0);
}

} // namespace

AppTimes appMillis(const QString& dataFolder) {
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

    AppTimes times;
    QElapsedTimer timer;
    timer.start();
    App app;
    QTimer::singleShot(0, &app, &App::launch);
    application.exec();
    const double startup = since(timer);
    application.removeEventFilter(&firstFrame);
    if (!firstFrame.painted || app.database == nullptr) // no frame, or the launch failed
        return times;
    times.startupMs = startup;

    app.enterProgram();
    app.navigate(Section::rental);
    typeCode(app, QStringLiteral("code"), QStringLiteral("1"));
    typeCode(app, QStringLiteral("clientCode"), QStringLiteral("1"));
    const qsizetype before = app.store.rentals.size();
    timer.restart();
    app.finalizeRental();
    app.table->viewport()->repaint();
    times.rentalMs = since(timer);
    if (app.store.rentals.size() != before + 1)
        return times;
    const QString rented = app.store.rentals.last().id;
    timer.restart();
    app.database->save(app.store); // the same save the commit made, alone
    times.rentalSaveMs = since(timer);

    app.navigate(Section::returns);
    app.rows();
    const int row = int(app.filteredIDs.indexOf(rented));
    if (row < 0)
        return times;
    app.table->selectionModel()->setCurrentIndex(app.table->model()->index(row, 0),
                                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    answerNextDialog(1); // [N] NÃO
    timer.restart();
    app.returnRental();
    app.table->viewport()->repaint();
    if (app.store.rentals.last().returned)
        times.returnMs = since(timer);
    timer.restart();
    app.database->save(app.store);
    times.returnSaveMs = since(timer);
    return times;
}
