#pragma once

#include "records/Records.h"

#include <QList>
#include <QString>

// One membership card, 85.6 × 54 mm, as a complete SVG element.
QString memberCardSVG(const Customer& customer, const QString& shopName);

// A print page with one card per customer, in the given order.
QString memberDocument(const QList<Customer>& customers, const QString& shopName);

// The layout numbers of one card (mm), computed in this order so that the
// page carries exactly these doubles.
struct MemberCardLayout {
    int barcodeUnits;
    double barcodeX;
    double brandLength;
    double iconX;
    double brandX;
    double nameSize;
    double phoneSize;
};
MemberCardLayout memberCardLayout(const Customer& customer, const QString& shopName);
