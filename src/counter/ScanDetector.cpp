#include "counter/ScanDetector.h"

#include <QElapsedTimer>
#include <Qt>
#include <algorithm>
#include <memory>

std::optional<ScanKey> scanKey(int key, int modifiers, const QString& text, qint64 timestamp) {
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
        return std::nullopt;
    default:
        break;
    }
    ScanKey scan{.text = text, .timestamp = timestamp, .key = key, .modifiers = modifiers};
    if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        scan.kind = ScanKey::Other;
    else if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab)
        scan.kind = ScanKey::Terminator;
    else if (!text.isEmpty() && std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.isPrint(); }))
        scan.kind = ScanKey::Printable;
    return scan;
}

ScanDetector::ScanDetector() {
    auto steady = std::make_shared<QElapsedTimer>();
    steady->start();
    now = [steady] {
        return steady->elapsed();
    };
}

void ScanDetector::setClock(std::function<qint64()> clock) {
    now = std::move(clock);
}

void ScanDetector::endRun() {
    run.clear();
    held.clear();
}

ScanStep ScanDetector::feed(const ScanKey& key, bool hold) {
    ScanStep step;
    const qint64 gap = key.timestamp - lastTimestamp;
    // A clock running backwards is no evidence of a scanner.
    const bool continues = !run.isEmpty() && gap >= 0 && gap <= scanGap;

    switch (key.kind) {
    case ScanKey::Printable: {
        const bool runHolds = continues && !held.isEmpty();
        if (!continues) {
            step.replay = held;
            endRun();
            step.runStarts = true;
        }
        run += key.text;
        lastTimestamp = key.timestamp;
        lastArrival = now();
        if (hold || runHolds) {
            held.append(key);
            step.action = ScanStep::Hold;
        }
        return step;
    }
    case ScanKey::Terminator:
        if (continues && run.size() >= minimumLength) {
            step.scan = run;
            step.action = ScanStep::Swallow;
            endRun();
            return step;
        }
        break;
    case ScanKey::Other:
        break;
    }
    step.replay = held;
    endRun();
    return step;
}

QList<ScanKey> ScanDetector::expired() {
    if (held.isEmpty() || now() - lastArrival < holdLimit)
        return {};
    const QList<ScanKey> typed = held;
    endRun();
    return typed;
}

std::optional<qint64> ScanDetector::expiresIn() const {
    if (held.isEmpty())
        return std::nullopt;
    return std::max<qint64>(0, holdLimit - (now() - lastArrival));
}
