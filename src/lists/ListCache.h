#pragma once

#include "lists/ListRows.h"

#include <QList>
#include <QStringList>

// What the list table shows, kept between table queries. Gives exactly what
// listRows would for the same inputs: a change of store, filter, search or a
// clock that leaves the steady span of the rows computes them again.
class ListCache {
public:
    struct Shown {
        QStringList ids;
        QList<QStringList> cells;
    };

    const Shown& rows(const Store& store, const ListFilter& filter, const QString& fieldText, Instant now);

    // Grows by one every time the shown rows are computed again.
    quint64 generation() const { return m_generation; }

private:
    bool baseIsCurrent(const Store& store, const ListFilter& filter, Instant now) const;

    bool m_hasBase = false;
    Store m_store; // shares the lists of the store it was made from, so any later change detaches them
    ListFilter m_filter;
    SteadySpan m_span;
    QList<ListRow> m_base;
    QStringList m_foldedTexts; // each base row's searched text, folded once

    bool m_hasShown = false;
    QString m_query; // trimmed, as typed
    Shown m_shown;
    quint64 m_generation = 0;
};
