// The program's own start-up, rental and return on a large store, measured in
// this process on the offscreen platform.
#include "bench_app.h"

#include "app/App.h"
#include "look/DOSButton.h"
#include "look/DOSField.h"
#include "look/DOSTable.h"
#include "storage/LocalDatabase.h"
#include "widgets/RecordForm.h"
#include "widgets/StyledDialog.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QItemSelectionModel>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <functional>

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

    // Five rentals of the same film, each returned at once; the medians are kept.
    app.enterProgram();
    QList<double> rentals, returns, rentalSaves, returnSaves;
    const auto timed = [&timer](const std::function<void()>& work) {
        timer.restart();
        work();
        return since(timer);
    };
    for (int round = 0; round < 5; ++round) {
        app.navigate(Section::rental);
        typeCode(app, QStringLiteral("code"), QStringLiteral("1"));
        typeCode(app, QStringLiteral("clientCode"), QStringLiteral("1"));
        const qsizetype before = app.store.rentals.size();
        rentals.append(timed([&] {
            app.finalizeRental();
            app.table->viewport()->repaint();
        }));
        if (app.store.rentals.size() != before + 1)
            return times;
        rentalSaves.append(timed([&] { app.database->save(app.store); })); // the commit's save, alone

        const QString rented = app.store.rentals.last().id;
        app.navigate(Section::returns);
        app.rows();
        const int row = int(app.filteredIDs.indexOf(rented));
        if (row < 0)
            return times;
        app.table->selectionModel()->setCurrentIndex(app.table->model()->index(row, 0),
                                                     QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        answerNextDialog(1); // [N] NÃO
        returns.append(timed([&] {
            app.returnRental();
            app.table->viewport()->repaint();
        }));
        if (!app.store.rentals.last().returned)
            return times;
        returnSaves.append(timed([&] { app.database->save(app.store); }));
    }
    const auto median = [](QList<double> values) {
        std::sort(values.begin(), values.end());
        return values[values.size() / 2];
    };
    times.rentalMs = median(rentals);
    times.returnMs = median(returns);
    times.rentalSaveMs = median(rentalSaves);
    times.returnSaveMs = median(returnSaves);
    return times;
}
