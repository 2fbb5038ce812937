#pragma once

#include "records/Records.h"

#include <QList>
#include <QString>

// The letters to customers who keep tapes past their due date, one page each,
// and a last page of phone numbers for calling round, oldest debt first.

inline constexpr const char* overdueNoticesPageName = "Avisos-de-atraso";

struct LateTape {
    QString title;
    QString copyCode;
    Instant due;
    qint64 daysLate = 0;
    qint64 fine = 0; // so far
};

struct OverdueNotice {
    Customer customer;
    QList<LateTape> tapes; // oldest due first
    qint64 total = 0;
    Instant oldestDue;
};

// False: the screen says "Nenhuma fita em atraso." and prints nothing.
bool anyLateRental(const Store& store, Instant now);

// Oldest due first (customer code on ties). A late rental whose customer is not in
// the store has nobody to write to and is left out.
QList<OverdueNotice> overdueNotices(const Store& store, Instant now);
QString overdueNoticesDocument(const QList<OverdueNotice>& notices, const QString& shopName, Instant now);
// The page in one call: empty when no rental is late.
QString overdueNoticesPage(const Store& store, Instant now);
