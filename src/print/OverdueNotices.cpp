// Pages of thousands of rows: "+" builds each piece in one allocation.
#define QT_USE_QSTRINGBUILDER
#include "print/OverdueNotices.h"

#include "print/PrintPage.h"
#include "records/CashDay.h"
#include "records/Codes.h"
#include "records/DateText.h"
#include "records/MoneyText.h"
#include "records/RentalRules.h"

#include <QHash>
#include <algorithm>

namespace {

const QString noticeStyle = QStringLiteral(
    "main{display:block}.notice,.phones{break-before:page}.notice:first-child{break-before:auto}"
    ".shop{font-size:18px;font-weight:bold;margin:0}.to{margin:8mm 0}h2{font-size:16px;margin:6mm 0 3mm}"
    "table{border-collapse:collapse;width:100%;margin:3mm 0}th,td{border:0.2mm solid #777;padding:1mm 2mm;"
    "text-align:left;vertical-align:top}.n{text-align:right;white-space:nowrap}.total td{font-weight:bold}"
    "@media screen{.notice,.phones{border-bottom:0.6mm dashed #777;padding-bottom:8mm;margin-bottom:8mm}}");

QString cell(const QString& text, bool number = false) {
    return (number ? QStringLiteral("<td class='n'>") : QStringLiteral("<td>")) + text + QStringLiteral("</td>");
}

QString addressLines(const Customer& customer) {
    const auto present = [](const std::optional<QString>& field) {
        return field && !field->trimmed().isEmpty();
    };
    QString lines = QStringLiteral("<b>") + escapedHTML(customer.name) + QStringLiteral("</b>");
    if (present(customer.address))
        lines += QStringLiteral("<br>") + escapedHTML(*customer.address);
    QStringList place;
    if (present(customer.city))
        place.append(escapedHTML(*customer.city));
    if (present(customer.state))
        place.append(escapedHTML(*customer.state));
    if (!place.isEmpty())
        lines += QStringLiteral("<br>") + place.join(QStringLiteral(" — "));
    if (present(customer.zip))
        lines += QStringLiteral("<br>CEP ") + escapedHTML(*customer.zip);
    return lines;
}

QString noticeSection(const OverdueNotice& notice, const QString& shop, const QString& today) {
    QString section =
        QStringLiteral("<section class='notice'><p class='shop'>") + shop + QStringLiteral("</p><p>") + today +
        QStringLiteral("</p><p class='to'>") + addressLines(notice.customer) +
        QStringLiteral("</p><h2>AVISO DE FITAS EM ATRASO</h2><p>Prezado(a) ") + escapedHTML(notice.customer.name) +
        QStringLiteral(",</p><p>Consta em nosso cadastro que as fitas abaixo já passaram da data de devolução. "
                       "Pedimos a gentileza de devolvê-las assim que possível, pois a multa continua a correr "
                       "a cada dia de atraso. Se já fez a devolução, por favor desconsidere este aviso.</p>"
                       "<table><tr><th>FILME</th><th>CÓDIGO</th><th>DEVOLVER ATÉ</th><th>DIAS</th>"
                       "<th>MULTA ATÉ HOJE</th></tr>");
    for (const LateTape& tape : notice.tapes)
        section += QStringLiteral("<tr>") + cell(escapedHTML(tape.title)) + cell(tape.copyCode) +
                   cell(dateTimeText(tape.due)) + cell(QString::number(tape.daysLate), true) +
                   cell(money(tape.fine), true) + QStringLiteral("</tr>");
    return section + QStringLiteral("<tr class='total'><td colspan='4'>TOTAL DEVIDO</td>") +
           cell(money(notice.total), true) +
           QStringLiteral("</tr></table><p>Agradecemos a atenção e esperamos por você.</p><p>Atenciosamente,<br>") +
           shop + QStringLiteral("</p></section>");
}

QString phonesSection(const QList<OverdueNotice>& notices, Instant now) {
    QString section = QStringLiteral("<section class='phones'><h2>TELEFONES</h2><p>Clientes com fitas em atraso em ") +
                      dateTimeText(now) +
                      QStringLiteral(", do atraso mais antigo ao mais recente.</p><table><tr><th>CÓDIGO</th>"
                                     "<th>NOME</th><th>TELEFONE</th><th>FITAS</th><th>ATRASO DESDE</th></tr>");
    for (const OverdueNotice& notice : notices)
        section += QStringLiteral("<tr>") + cell(customerCardCode(notice.customer.code)) +
                   cell(escapedHTML(notice.customer.name)) + cell(escapedHTML(notice.customer.phone)) +
                   cell(QString::number(notice.tapes.size()), true) + cell(dateTimeText(notice.oldestDue)) +
                   QStringLiteral("</tr>");
    return section + QStringLiteral("</table></section>");
}

} // namespace

bool anyLateRental(const Store& store, Instant now) {
    return std::any_of(store.rentals.cbegin(), store.rentals.cend(),
                       [&](const Rental& rental) { return isLate(rental, now); });
}

QList<OverdueNotice> overdueNotices(const Store& store, Instant now) {
    QList<const Rental*> late;
    for (const Rental& rental : store.rentals)
        if (isLate(rental, now))
            late.append(&rental);
    if (late.isEmpty())
        return {};

    QHash<QString, const Customer*> customers;
    // Walked backwards so the first record of a duplicated id is the one kept.
    for (auto it = store.customers.crbegin(); it != store.customers.crend(); ++it)
        customers.insert(it->id, &*it);
    QHash<QString, const Film*> films;
    for (auto it = store.films.crbegin(); it != store.films.crend(); ++it)
        films.insert(it->id, &*it);

    QList<OverdueNotice> notices;
    QHash<QString, qsizetype> noticeOf;
    for (const Rental* rental : late) {
        const Customer* customer = customers.value(rental->customer);
        if (!customer)
            continue;
        auto found = noticeOf.find(customer->id);
        if (found == noticeOf.end()) {
            found = noticeOf.insert(customer->id, notices.size());
            notices.append(OverdueNotice{*customer, {}, 0, rental->due});
        }
        OverdueNotice& notice = notices[*found];
        const Film* film = films.value(rental->film);
        LateTape tape;
        tape.title = film ? film->title : QStringLiteral("—");
        tape.copyCode = film && rental->copy ? copyCode(film->code, *rental->copy)
                        : film               ? inventoryCode(film->code)
                                             : QStringLiteral("—");
        tape.due = rental->due;
        tape.daysLate = overdue(*rental, now);
        tape.fine = fineFor(tape.daysLate, rental->finePerDay);
        notice.tapes.append(tape);
        notice.total = cashSum(notice.total, tape.fine);
        notice.oldestDue = std::min(notice.oldestDue, rental->due);
    }
    for (OverdueNotice& notice : notices)
        std::stable_sort(notice.tapes.begin(), notice.tapes.end(),
                         [](const LateTape& a, const LateTape& b) { return a.due < b.due; });
    std::stable_sort(notices.begin(), notices.end(), [](const OverdueNotice& a, const OverdueNotice& b) {
        if (a.oldestDue != b.oldestDue)
            return a.oldestDue < b.oldestDue;
        return a.customer.code.value_or(0) < b.customer.code.value_or(0);
    });
    return notices;
}

QString overdueNoticesDocument(const QList<OverdueNotice>& notices, const QString& shopName, Instant now) {
    const QString shop = escapedHTML(shopName);
    const QString today = dateText(now);
    QString body;
    for (const OverdueNotice& notice : notices)
        body += noticeSection(notice, shop, today);
    body += phonesSection(notices, now);
    return printDocument(QStringLiteral("AVISOS DE ATRASO"), body, noticeStyle);
}

QString overdueNoticesPage(const Store& store, Instant now) {
    const QList<OverdueNotice> notices = overdueNotices(store, now);
    if (notices.isEmpty())
        return QString();
    return overdueNoticesDocument(notices, shownShopName(store.locadoraName), now);
}
