#pragma once

#include "records/RentalRules.h"

#include <QPair>

// A return at another instant than now (a tape left in the drop box the evening
// before) with part or all of its fine forgiven. The document gains nothing new:
// the forgiveness is one more cash-book entry beside the usual return's.

// The form's fields (label, initial value): "DEVOLVIDA EM" (now), "ABONO (R$)" ("0,00"), "MOTIVO" ("").
QList<QPair<QString, QString>> adjustedReturnFields(Instant now);

// The form's answers read and checked, before the rewind question is asked.
struct AdjustedReturn {
    QString rental; // id
    Instant returned;
    qint64 fine = 0;     // computed for the return instant, before forgiveness
    qint64 forgiven = 0; // 0 ... fine
    QString reason;      // trimmed; present when something is forgiven
};

// The texts as typed in the form. Refused (with the dialog's title and text) when
// the rental is not open, the instant is unreadable, before the rental's start or
// after now, the amount is unreadable or above the fine, or a forgiveness has no
// reason.
Ruled<AdjustedReturn> adjustedReturn(const Store& store, const QString& rentalID, const QString& returnedAt,
                                     const QString& forgiven, const QString& reason, Instant now);

// returnedStore at the checked instant, plus the entry "Abono de multa: " + title +
// " — " + reason dated that instant with the forgiven amount negative when there is
// one. Throws FilmCSVError("Esta fita já foi devolvida.") as returnedStore does.
Store adjustedReturnedStore(const Store& store, const AdjustedReturn& checked, bool rewound);
