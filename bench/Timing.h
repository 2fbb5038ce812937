#pragma once

#include <QElapsedTimer>
#include <QList>
#include <algorithm>

// The measuring every benchmark does: milliseconds of a piece of work, and the
// middle and the worst of several.

inline double since(const QElapsedTimer& timer) {
    return double(timer.nsecsElapsed()) / 1e6;
}

// -1 when nothing was measured (the program under test never got that far).
inline double median(QList<double> values) {
    if (values.isEmpty())
        return -1;
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

inline double worst(const QList<double>& values) {
    return *std::max_element(values.cbegin(), values.cend());
}

template <typename F> double millis(F&& work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return since(timer);
}

template <typename F> double medianMillis(int runs, F&& work) {
    QList<double> times;
    for (int i = 0; i < runs; ++i)
        times.append(millis(work));
    return median(times);
}
