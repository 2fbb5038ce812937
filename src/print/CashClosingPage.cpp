#include "print/CashClosingPage.h"

#include "print/PrintPage.h"
#include "records/DateText.h"
#include "records/MoneyText.h"

namespace {

const QString closingStyle = QStringLiteral(
    "main{display:block}.shop{font-size:18px;font-weight:bold;margin:0}h2{font-size:16px;margin:4mm 0 3mm}"
    "table{border-collapse:collapse;margin:3mm 0}th,td{border:0.2mm solid #777;padding:1mm 2mm;text-align:left;"
    "vertical-align:top}.n{text-align:right;white-space:nowrap}.balance td{font-weight:bold}.entries{width:100%}");

QString cell(const QString& text, bool number = false) {
    return (number ? QStringLiteral("<td class='n'>") : QStringLiteral("<td>")) + text + QStringLiteral("</td>");
}

} // namespace

QString cashClosingDocument(const CashDay& day, const QString& shopName) {
    const QString title = cashDayTitle(day.day);
    QString body = QStringLiteral("<p class='shop'>") + escapedHTML(shopName) + QStringLiteral("</p><h2>") + title +
                   QStringLiteral("</h2><table><tr><th>GRUPO</th><th>QTD.</th><th>VALOR</th></tr>");
    for (int kind = 0; kind < cashKindCount; ++kind) {
        const CashGroup& group = day.groups[std::size_t(kind)];
        body += QStringLiteral("<tr>") + cell(cashKindName(CashKind(kind))) + cell(QString::number(group.count), true) +
                cell(money(group.sum), true) + QStringLiteral("</tr>");
    }
    body += QStringLiteral("<tr class='balance'><td colspan='2'>SALDO DO DIA</td>") + cell(money(day.balance), true) +
            QStringLiteral("</tr><tr class='balance'><td colspan='2'>SALDO ACUMULADO</td>") +
            cell(money(day.bookBalance), true) +
            QStringLiteral("</tr></table><h2>LANÇAMENTOS DO DIA</h2><table class='entries'><tr><th>HORA</th>"
                           "<th>DESCRIÇÃO</th><th>GRUPO</th><th>VALOR</th></tr>");
    for (const Entry& entry : day.entries)
        body += QStringLiteral("<tr>") + cell(dateTimeText(entry.date).right(5)) +
                cell(escapedHTML(entry.description)) + cell(cashKindName(cashKind(entry))) +
                cell(money(entry.amount), true) + QStringLiteral("</tr>");
    if (day.entries.isEmpty())
        body += QStringLiteral("<tr><td colspan='4'>Nenhum lançamento neste dia.</td></tr>");
    return printDocument(title, body + QStringLiteral("</table>"), closingStyle);
}

QString cashClosingPage(const Store& store, QDate day) {
    return cashClosingDocument(cashDay(store, day), shownShopName(store.locadoraName));
}
