#pragma once

#include "records/Records.h"

#include <QList>
#include <QPair>
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

// The labels of one film on a sheet that may be partly used: they start at a
// position of the sheet (counted left to right, top to bottom, from 1), the
// places before it left blank, and cover a run of copies.
struct LabelSheet {
    LabelSize size{defaultLabelWidth, defaultLabelHeight};
    qint64 firstPosition = 1;
    qint64 firstCopy = 1;
    qint64 lastCopy = 1;
};

// The label form's fields, prefilled: "LARGURA", "ALTURA", "PRIMEIRA ETIQUETA" (1)
// and "EXEMPLARES" ("TODOS", or one copy "3", or a run "2-4").
QList<QPair<QString, QString>> labelFormFields(const Film& film);
// The form's four answers in that order. Absent when the size is refused
// (chosenLabelSize), the position is not on an A4 sheet of labels of that size, or
// the copies are not copies of the film; an empty position or copies means the default.
std::optional<LabelSheet> chosenLabelSheet(const QStringList& answers, const Film& film);
// Labels per A4 sheet: the columns and rows of that size that fit its printable area.
qint64 labelsPerSheet(const LabelSize& size);
QString labelDocument(const Film& film, const QString& shopName, const LabelSheet& sheet);
