#include "app/ScanFilter.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>

namespace {

bool isTextField(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) != nullptr || qobject_cast<const QPlainTextEdit*>(widget) != nullptr;
}

} // namespace

ScanFilter::ScanFilter(Hooks hooks, QObject* parent) : QObject(parent), hooks(std::move(hooks)) {
    holdTimer.setSingleShot(true);
    connect(&holdTimer, &QTimer::timeout, this, &ScanFilter::holdExpired);
}

bool ScanFilter::keyPress(QKeyEvent* event) {
    if (replaying)
        return false;
    std::optional<ScanKey> key =
        scanKey(event->key(), int(event->modifiers()), event->text(), qint64(event->timestamp()));
    if (!key)
        return false;
    // A key the program made itself carries no time: it can be no scanner's.
    if (event->timestamp() == 0)
        key->kind = ScanKey::Other;
    const ScanStep step = detector.feed(*key, !isTextField(hooks.focused()));
    replay(step.replay);
    if (step.runStarts) {
        QWidget* focused = hooks.focused();
        hooks.runStarts(isTextField(focused) && step.action == ScanStep::Pass ? focused : nullptr);
    }
    switch (step.action) {
    case ScanStep::Hold:
        holdTimer.start(int(detector.expiresIn().value_or(0)));
        return true;
    case ScanStep::Swallow:
        if (step.scan)
            QMetaObject::invokeMethod(
                this, [this, code = *step.scan] { hooks.scanned(code); }, Qt::QueuedConnection);
        return true;
    case ScanStep::Pass:
        break;
    }
    if (step.replay.isEmpty())
        return false;
    // The keys let go may have moved the focus: this one follows them there.
    replay({*key});
    return true;
}

void ScanFilter::replay(const QList<ScanKey>& keys) {
    for (const ScanKey& key : keys) {
        QWidget* target = hooks.focused();
        if (target == nullptr)
            return;
        QKeyEvent press(QEvent::KeyPress, key.key, Qt::KeyboardModifiers(key.modifiers), key.text);
        replaying = true;
        QApplication::sendEvent(target, &press);
        replaying = false;
    }
}

void ScanFilter::holdExpired() {
    const QList<ScanKey> typed = detector.expired();
    if (typed.isEmpty()) {
        if (const std::optional<qint64> wait = detector.expiresIn())
            holdTimer.start(int(*wait));
        return;
    }
    replay(typed);
}
