#include "screens/HistoryScreen.h"

#include "lists/Sections.h"
#include "records/Codes.h"
#include "records/DateText.h"
#include "records/History.h"
#include "screens/ScreenHost.h"

#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

namespace {

template <typename Record> const Record* byID(const QList<Record>& records, const QString& id) {
    const auto found =
        std::find_if(records.cbegin(), records.cend(), [&id](const Record& record) { return record.id == id; });
    return found != records.cend() ? &*found : nullptr;
}

const QString separator = QStringLiteral("  │  ");

bool sameData(const Store& a, const Store& b) {
    return a.films.isSharedWith(b.films) && a.customers.isSharedWith(b.customers) &&
           a.rentals.isSharedWith(b.rentals) && a.entries.isSharedWith(b.entries);
}

QString heading(const Store& store, bool customer, const QString& id) {
    const QString prefix = QStringLiteral("HISTÓRICO") + separator;
    if (customer) {
        const Customer* found = byID(store.customers, id);
        return prefix + (found != nullptr ? customerCode(*found) + QStringLiteral("  ") + found->name.toUpper()
                                          : QStringLiteral("—"));
    }
    const Film* found = byID(store.films, id);
    return prefix + (found != nullptr ? inventoryCode(found->code) + QStringLiteral("  ") + found->title.toUpper()
                                      : QStringLiteral("—"));
}

} // namespace

HistoryScreen::HistoryScreen(ScreenHost& host, int section, const QString& id)
    : m_host(host), m_customer(section == Section::customers), m_id(id) {}

void HistoryScreen::show(const Commands& commands) {
    ScreenHost& host = m_host;
    const QString& id = m_id;
    const Store& store = host.shop();
    auto* top = new QWidget;
    setParent(top); // goes with the body it was built in
    auto* lines = new QVBoxLayout(top);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(8);
    lines->addWidget(host.label(heading(store, m_customer, id), 16));
    if (m_customer) {
        // A long line wraps between its figures, never inside one.
        QStringList figures = historySummaryText(customerHistorySummary(store, id, host.now())).split(separator);
        for (QString& figure : figures)
            figure.replace(u' ', QChar::Nbsp);
        QLabel* summary = host.label(figures.join(separator));
        summary->setWordWrap(true);
        lines->addWidget(summary);
    }
    host.addBody(top);
    host.addListTable();
    host.actionRow({{QStringLiteral("VOLTAR"), commands.back}, {QStringLiteral("EXPORTAR CSV"), commands.exportCSV}});
}

int HistoryScreen::columnWidth(const QString& header) {
    if (header == QStringLiteral("FILME") || header == QStringLiteral("CLIENTE"))
        return 240;
    if (header == QStringLiteral("MULTA") || header == QStringLiteral("ABONO"))
        return 100;
    return header == QStringLiteral("CÓDIGO") ? 130 : 150;
}

QStringList HistoryScreen::columns() const {
    return m_customer ? customerHistoryColumns() : filmHistoryColumns();
}

const HistoryScreen::Shown& HistoryScreen::rows(const QString& fieldText) {
    const Store& store = m_host.shop();
    const Instant now = m_host.now();
    // An open rental's fine so far is the only cell that moves with time, and only from one day to the next.
    const QDate day = calendar::localDate(now);
    if (m_hasShown && fieldText == m_query && day == m_day && sameData(store, m_store))
        return m_shown;
    const QList<HistoryRow> rows = searchedHistory(
        m_customer ? customerHistoryRows(store, m_id, now) : filmHistoryRows(store, m_id, now), fieldText);
    m_shown = {};
    for (const HistoryRow& row : rows) {
        m_shown.ids.append(row.id);
        m_shown.cells.append(row.cells);
    }
    m_store = store;
    m_day = day;
    m_query = fieldText;
    m_hasShown = true;
    ++m_generation;
    return m_shown;
}
