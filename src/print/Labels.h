#pragma once

#include "records/Records.h"

#include <QList>
#include <QString>
#include <optional>

// Code 39 of "*" + value + "*" as inline SVG, one unit 0.25 mm, 30 units high;
// empty when the value has a character outside 0-9, C, O, D, L, I and "-".
QString barcodeSVG(const QString& value);

// Narrowest label (mm) that fits the barcode of every film's last copy; at least 70.0.
double requiredLabelWidth(const QList<Film>& films);

inline constexpr double defaultLabelWidth = 70.0;
inline constexpr double defaultLabelHeight = 18.0;

// One label per copy of each film, in order, on a print page.
QString labelDocument(const QList<Film>& films, const QString& shopName, double width = defaultLabelWidth,
                      double height = defaultLabelHeight);

// The size form's answers ("72,5" reads as 72.5). Absent when either is not a
// number or out of range: width from requiredLabelWidth to 190, height 18 to 50.
struct LabelSize {
    double width;
    double height;
};
std::optional<LabelSize> chosenLabelSize(const QString& widthText, const QString& heightText, const Film& film);

// The width the size form proposes: requiredLabelWidth rounded up, as an integer.
QString proposedLabelWidth(const Film& film);
