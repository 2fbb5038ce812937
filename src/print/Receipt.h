#pragma once

#include "records/Records.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

// The counter slip handed to the customer after a rental (one tape or several)
// or a return, on an 80 mm receipt roll. The screen remembers the last act as a
// CounterAct and builds the page from the store when F10 asks for it.

inline constexpr const char* receiptPageName = "Recibo";

enum class ReceiptKind { rental, giveBack };

struct CounterAct {
    ReceiptKind kind = ReceiptKind::rental;
    QStringList rentals; // ids, in the order made
};
// The rentals one SALVAR appended: those of after beyond the length of before.
CounterAct rentalAct(const Store& before, const Store& after);
CounterAct returnAct(const QString& rentalID);

struct ReceiptTape {
    QString copyCode;
    QString title;
    qint64 price = 0;     // rental
    Instant due;          // rental
    qint64 daysLate = 0;  // return
    qint64 fine = 0;      // return
    qint64 rewindFee = 0; // return
};

struct Receipt {
    ReceiptKind kind = ReceiptKind::rental;
    QString shopName;
    Instant when;         // the rental's start, or the return
    QString customerCode; // "CLI-0001"
    QString customerName;
    QList<ReceiptTape> tapes;
    qint64 total = 0;
};

// Nothing when no rental of the act is in the store (or, for a return, none is returned).
std::optional<Receipt> receiptOf(const Store& store, const CounterAct& act);
QString receiptDocument(const Receipt& receipt);
// The page for F10 in one call: empty when there is nothing to print.
QString receiptPage(const Store& store, const std::optional<CounterAct>& lastAct);
