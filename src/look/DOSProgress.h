#pragma once

#include "exchange/Progress.h"

#include <QPointer>
#include <QString>
#include <functional>

class QLabel;

// Long work shown in the status line, in the DOS look. For the first half second
// nothing changes, so short work looks exactly as without it; after that the
// status line reads the caption and a bar with the percentage, and every report
// keeps the windows repainting while keys, clicks and window closing made
// meanwhile are dropped, not queued for later. The status line's text comes back
// when the object goes, also when the work throws.
//
//     DOSProgress progress(status, QStringLiteral("IMPORTANDO CSV"));
//     Store imported = importFilmCSVFile(path, store, progress.callback());
class DOSProgress {
public:
    // Milliseconds from any fixed start; tests pass their own.
    using Clock = std::function<qint64()>;

    static constexpr qint64 quietMs = 500;  // work shorter than this shows nothing
    static constexpr qint64 repaintMs = 40; // at most this often the windows repaint

    explicit DOSProgress(QLabel* status, QString caption, Clock clock = {});
    ~DOSProgress();
    DOSProgress(const DOSProgress&) = delete;
    DOSProgress& operator=(const DOSProgress&) = delete;

    void report(qint64 done, qint64 total);
    // A function calling report(), to hand to the work. It must not outlive this object.
    Progress callback();

    bool shown() const { return shown_; }

    // "IMPORTANDO CSV  │  [██████░░░░░░░░░░░░░░]  30%": twenty cells, each a
    // twentieth of the work, and the whole percentage done.
    static QString line(const QString& caption, qint64 done, qint64 total);

private:
    void repaintWithoutInput();

    QPointer<QLabel> status_;
    QString caption_;
    Clock clock_;
    qint64 start_ = 0;
    qint64 lastRepaint_ = 0;
    bool shown_ = false;
    QString savedText_;
    QString shownText_;
};
