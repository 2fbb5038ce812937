#include "look/DOSProgress.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QLabel>
#include <algorithm>
#include <memory>

namespace {

// Swallows what the operator does while the work runs: acting on it afterwards
// would hit whatever the work leaves on screen (its own result dialog, say).
class InputSwallower : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::Shortcut:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::TouchBegin:
            return true;
        case QEvent::Close:
            return event->spontaneous(); // the window manager's close, not the program's
        default:
            return false;
        }
    }
};

DOSProgress::Clock steadyClock() {
    auto timer = std::make_shared<QElapsedTimer>();
    timer->start();
    return [timer] {
        return timer->elapsed();
    };
}

} // namespace

DOSProgress::DOSProgress(QLabel* status, QString caption, Clock clock)
    : status_(status), caption_(std::move(caption)), clock_(clock ? std::move(clock) : steadyClock()) {
    start_ = clock_();
}

DOSProgress::~DOSProgress() {
    if (shown_ && status_ != nullptr)
        status_->setText(savedText_);
}

Progress DOSProgress::callback() {
    return [this](qint64 done, qint64 total) {
        report(done, total);
    };
}

QString DOSProgress::line(const QString& caption, qint64 done, qint64 total) {
    constexpr qint64 cells = 20;
    const qint64 part = total > 0 ? std::clamp<qint64>(done, 0, total) : 0;
    const qint64 full = total > 0 ? part * cells / total : 0;
    const qint64 percent = total > 0 ? part * 100 / total : 0;
    return caption + QStringLiteral("  │  [") + QString(full, QChar(u'█')) + QString(cells - full, QChar(u'░')) +
           QStringLiteral("]  ") + QString::number(percent) + u'%';
}

void DOSProgress::report(qint64 done, qint64 total) {
    const qint64 now = clock_();
    if (now - start_ < quietMs || status_ == nullptr)
        return;
    if (!shown_) {
        shown_ = true;
        savedText_ = status_->text();
        lastRepaint_ = now - repaintMs;
    }
    const QString text = line(caption_, done, total);
    if (text != shownText_) {
        shownText_ = text;
        status_->setText(text);
    }
    if (now - lastRepaint_ >= repaintMs) {
        lastRepaint_ = now;
        repaintWithoutInput();
    }
}

void DOSProgress::repaintWithoutInput() {
    QCoreApplication* application = QCoreApplication::instance();
    if (application == nullptr)
        return;
    InputSwallower swallower;
    application->installEventFilter(&swallower);
    QCoreApplication::processEvents();
    application->removeEventFilter(&swallower);
}
