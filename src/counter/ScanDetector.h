#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <optional>

// One key press as the detector sees it. Lone modifier presses (Shift, Control,
// Alt, Meta) are not fed at all: a scanner sends Shift around upper-case letters.
struct ScanKey {
    enum Kind { Printable, Terminator, Other }; // Terminator: Return, keypad Enter, Tab
    Kind kind = Other;
    QString text;
    qint64 timestamp = 0; // the event's own, in ms
    // The caller's own description of the event, kept so a held key can be replayed
    // as it came; the detector never reads them.
    int key = 0;
    int modifiers = 0;
};

// A key press of the window as the detector sees it (key and modifiers are Qt::Key and
// Qt::KeyboardModifiers values): Return, keypad Enter and Tab without Control, Alt or
// Meta end a scan; text without those modifiers is printable; the rest is another key.
// Nothing for a lone modifier press.
std::optional<ScanKey> scanKey(int key, int modifiers, const QString& text, qint64 timestamp);

// What the caller does with the key just fed, and before it.
struct ScanStep {
    enum Action { Pass, Hold, Swallow };
    QList<ScanKey> replay;       // held keys now known to be typing: deliver them first, in order
    Action action = Pass;        // then this key: let it through, keep it back, or drop it
    bool runStarts = false;      // this printable key may begin a scan: remember the field as it is before it
    std::optional<QString> scan; // this key completed a scan (action Swallow): the characters read
};

// Tells a keyboard-wedge scanner from a person by the gaps between key presses: at
// least minimumLength printable keys at most scanGap ms apart, ended by a terminator
// at most scanGap ms after the last, are a scan; anything slower is typing.
class ScanDetector {
public:
    static constexpr qint64 scanGap = 30;
    static constexpr qsizetype minimumLength = 5;
    // How long a held key waits, by the caller's clock, for a next key before it is
    // typing: past scanGap, with room for a queued event to arrive late.
    static constexpr qint64 holdLimit = 50;

    ScanDetector();

    // hold: this printable key should be kept back until it is known not to be part of
    // a scan (no text field has the focus, so it could be a shortcut). Once a run holds,
    // its later keys are held too.
    ScanStep feed(const ScanKey& key, bool hold);

    // Held keys whose wait is over, to replay now (empty when none); the run is over.
    QList<ScanKey> expired();
    // Milliseconds until the held keys expire, or nothing when none is held.
    std::optional<qint64> expiresIn() const;

    bool holding() const { return !held.isEmpty(); }

    // Milliseconds on a monotonic clock; steady by default, replaceable in tests.
    void setClock(std::function<qint64()> clock);

private:
    void endRun();

    std::function<qint64()> now;
    QString run;              // printable characters of the current fast run
    qint64 lastTimestamp = 0; // event time of the run's last key
    qint64 lastArrival = 0;   // caller's clock when the run's last key arrived
    QList<ScanKey> held;
};
