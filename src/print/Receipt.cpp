#include "print/Receipt.h"

#include "print/PrintPage.h"
#include "records/CashDay.h"
#include "records/Codes.h"
#include "records/DateText.h"
#include "records/MoneyText.h"
#include "records/RentalRules.h"

#include <QHash>
#include <QSet>

namespace {

// A roll is as long as the slip; 297 mm holds a long rental, and a longer one runs on.
const QString receiptStyle = QStringLiteral(
    "@page{size:80mm 297mm;margin:4mm}main{display:block}.slip{width:72mm;max-width:100%;font-size:12px}"
    ".slip p{margin:0 0 1mm}.shop{font-size:15px;font-weight:bold;text-align:center}.kind{text-align:center}"
    ".row{display:flex;justify-content:space-between;gap:2mm}.tape{margin:0 0 2mm}.total{font-size:14px;"
    "font-weight:bold}.slip hr{border:0;border-top:0.3mm dashed black;margin:2mm 0}.thanks{text-align:center}");

QString row(const QString& left, const QString& right) {
    return QStringLiteral("<p class='row'><span>") + left + QStringLiteral("</span><span>") + right +
           QStringLiteral("</span></p>");
}

} // namespace

CounterAct rentalAct(const Store& before, const Store& after) {
    CounterAct act{ReceiptKind::rental, {}};
    for (qsizetype i = before.rentals.size(); i < after.rentals.size(); ++i)
        act.rentals.append(after.rentals[i].id);
    return act;
}

CounterAct returnAct(const QString& rentalID) {
    return CounterAct{ReceiptKind::giveBack, {rentalID}};
}

std::optional<Receipt> receiptOf(const Store& store, const CounterAct& act) {
    QHash<QString, const Rental*> rentals;
    const QSet<QString> wanted(act.rentals.cbegin(), act.rentals.cend());
    for (const Rental& rental : store.rentals)
        if (wanted.contains(rental.id) && !rentals.contains(rental.id))
            rentals.insert(rental.id, &rental);

    Receipt receipt;
    receipt.kind = act.kind;
    receipt.shopName = shownShopName(store.locadoraName);
    const Customer* customer = nullptr;
    for (const QString& id : act.rentals) {
        const Rental* rental = rentals.value(id);
        if (!rental || (act.kind == ReceiptKind::giveBack && !rental->returned))
            continue;
        if (receipt.tapes.isEmpty()) {
            receipt.when = act.kind == ReceiptKind::giveBack ? *rental->returned : rental->start;
            for (const Customer& candidate : store.customers)
                if (candidate.id == rental->customer) {
                    customer = &candidate;
                    break;
                }
        }
        const Film* film = nullptr;
        for (const Film& candidate : store.films)
            if (candidate.id == rental->film) {
                film = &candidate;
                break;
            }
        ReceiptTape tape;
        tape.title = film ? film->title : QStringLiteral("—");
        tape.copyCode = film && rental->copy ? copyCode(film->code, *rental->copy)
                        : film               ? inventoryCode(film->code)
                                             : QStringLiteral("—");
        if (act.kind == ReceiptKind::rental) {
            tape.price = rental->price;
            tape.due = rental->due;
            receipt.total = cashSum(receipt.total, tape.price);
        } else {
            tape.daysLate = overdue(*rental, *rental->returned);
            tape.fine = rental->fine.value_or(0);
            tape.rewindFee = rental->rewindFee.value_or(0);
            receipt.total = cashSum(cashSum(receipt.total, tape.fine), tape.rewindFee);
        }
        receipt.tapes.append(tape);
    }
    if (receipt.tapes.isEmpty())
        return std::nullopt;
    receipt.customerCode = customerCardCode(customer ? customer->code : std::nullopt);
    receipt.customerName = customer ? customer->name : QStringLiteral("—");
    return receipt;
}

QString receiptDocument(const Receipt& receipt) {
    const bool rental = receipt.kind == ReceiptKind::rental;
    QString body = QStringLiteral("<section class='slip'><p class='shop'>") + escapedHTML(receipt.shopName) +
                   QStringLiteral("</p><p class='kind'>") +
                   (rental ? QStringLiteral("RECIBO DE LOCAÇÃO") : QStringLiteral("RECIBO DE DEVOLUÇÃO")) +
                   QStringLiteral("</p><p class='kind'>") + dateTimeText(receipt.when) + QStringLiteral("</p><hr><p>") +
                   receipt.customerCode + QStringLiteral(" — ") + escapedHTML(receipt.customerName) +
                   QStringLiteral("</p><hr>");
    for (const ReceiptTape& tape : receipt.tapes) {
        body += QStringLiteral("<div class='tape'><p><b>") + tape.copyCode + QStringLiteral("</b> ") +
                escapedHTML(tape.title) + QStringLiteral("</p>");
        if (rental) {
            body += row(QStringLiteral("DEVOLVER ATÉ ") + dateTimeText(tape.due), money(tape.price));
        } else {
            body += row(QStringLiteral("DIAS DE ATRASO"), QString::number(tape.daysLate)) +
                    row(QStringLiteral("MULTA"), money(tape.fine)) +
                    row(QStringLiteral("REBOBINAGEM"), money(tape.rewindFee));
        }
        body += QStringLiteral("</div>");
    }
    body += QStringLiteral("<hr><p class='row total'><span>TOTAL</span><span>") + money(receipt.total) +
            QStringLiteral("</span></p><hr><p class='thanks'>") +
            (rental ? QStringLiteral("BOA SESSÃO! REBOBINE ANTES DE DEVOLVER.")
                    : QStringLiteral("OBRIGADO PELA PREFERÊNCIA!")) +
            QStringLiteral("</p></section>");
    return printDocument(rental ? QStringLiteral("RECIBO DE LOCAÇÃO") : QStringLiteral("RECIBO DE DEVOLUÇÃO"), body,
                         receiptStyle);
}

QString receiptPage(const Store& store, const std::optional<CounterAct>& lastAct) {
    if (!lastAct)
        return QString();
    const std::optional<Receipt> receipt = receiptOf(store, *lastAct);
    return receipt ? receiptDocument(*receipt) : QString();
}
