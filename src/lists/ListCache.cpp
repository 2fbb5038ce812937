#include "lists/ListCache.h"

#include "records/Search.h"

namespace {

// Copy-on-write lists: sharing the same data means no one changed them since.
bool sameData(const Store& a, const Store& b) {
    return a.films.isSharedWith(b.films) && a.customers.isSharedWith(b.customers) &&
           a.rentals.isSharedWith(b.rentals) && a.entries.isSharedWith(b.entries) &&
           a.reportRentalBaseline == b.reportRentalBaseline && a.locadoraName == b.locadoraName;
}

} // namespace

bool ListCache::baseIsCurrent(const Store& store, const ListFilter& filter, Instant now) const {
    return m_hasBase && m_filter == filter && m_span.contains(now) && sameData(m_store, store);
}

const ListCache::Shown& ListCache::rows(const Store& store, const ListFilter& filter, const QString& fieldText,
                                        Instant now) {
    const QString trimmed = searchQuery(fieldText);
    if (!baseIsCurrent(store, filter, now)) {
        m_store = store;
        m_filter = filter;
        m_span = steadySpan(store, filter.section, now);
        m_base = sectionRows(store, filter, now);
        m_foldedTexts.clear();
        m_foldedTexts.reserve(m_base.size());
        for (const ListRow& row : m_base)
            m_foldedTexts.append(foldedKey(searchedText(row)));
        m_hasBase = true;
        m_hasShown = false;
    }
    if (m_hasShown && trimmed == m_query)
        return m_shown;

    // A blank query keeps every row; one that folds to nothing (accents alone) keeps none.
    const bool everyRow = trimmed.isEmpty();
    const QString query = foldedKey(trimmed);
    m_shown = {};
    for (qsizetype i = 0; i < m_base.size(); ++i) {
        if (everyRow || (!query.isEmpty() && m_foldedTexts.at(i).contains(query))) {
            m_shown.ids.append(m_base.at(i).id);
            m_shown.cells.append(m_base.at(i).cells);
        }
    }
    m_query = trimmed;
    m_hasShown = true;
    ++m_generation;
    return m_shown;
}
