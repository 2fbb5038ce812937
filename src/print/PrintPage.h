#pragma once

#include <QString>
#include <optional>

// "&", "<", ">" and the double quote as entities, "&" first so nothing is
// escaped twice; apostrophes pass unchanged.
QString escapedHTML(const QString& text);

// For a value inside a single-quoted attribute: escapedHTML plus "'" as "&#39;",
// so a name like "D'Arc" cannot end the attribute.
QString escapedAttribute(const QString& text);

// The common A4 page: toolbar with instructions and print button, then body in
// <main>, then the 50 mm check ruler. title is plain text; body and css are
// inserted as they are.
QString printDocument(const QString& title, const QString& body, const QString& css = QString());

// A real number on a page: the shortest decimal that reads back to the same
// double, "." as separator, whole numbers with ".0" (70.0, 60.75, 19.699999999999996).
QString realNumberText(double value);

// User-perceived characters (extended grapheme clusters).
qsizetype graphemeLength(const QString& text);

// The shop's name as pages show it: the one set, else "LOCADORA".
QString shownShopName(const std::optional<QString>& locadoraName);
