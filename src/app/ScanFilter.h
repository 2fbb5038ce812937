#pragma once

#include "counter/ScanDetector.h"

#include <QObject>
#include <QTimer>
#include <functional>

class QKeyEvent;
class QWidget;

// The barcode scanner's side of the key filter: a fast run of keys ended by Return,
// keypad Enter or Tab is taken away from the window and handed over as one code,
// while keys typed by hand reach the window as before. Keys that could be shortcuts
// wait a moment (ScanDetector::holdLimit) to be sure they do not begin a scan.
class ScanFilter : public QObject {
    Q_OBJECT
public:
    struct Hooks {
        std::function<QWidget*()> focused; // where replayed keys go: the main window's focus
        // A run of keys begins, in this text field (or none): remember it as it is.
        std::function<void(QWidget* field)> runStarts;
        std::function<void(const QString&)> scanned; // after the filter has returned
    };

    explicit ScanFilter(Hooks hooks, QObject* parent = nullptr);

    // A key press of the main window outside any dialog; true when it was taken.
    bool keyPress(QKeyEvent* event);

    // The hold timeout's clock, in milliseconds; replaceable in tests.
    void setClock(std::function<qint64()> clock) { detector.setClock(std::move(clock)); }

private:
    void replay(const QList<ScanKey>& keys);
    void holdExpired();

    Hooks hooks;
    ScanDetector detector;
    QTimer holdTimer;
    bool replaying = false;
};
