#pragma once

#include <QString>
#include <optional>

// Reads an amount typed by the operator ("5,50") as centavos; absent when the
// text is not an acceptable amount (0 … 1 000 000 reais, at most two decimals).
std::optional<qint64> cents(const QString& text);

// "R$ 5,50" with a no-break space, "." between thousands, "-R$ 1,00" below zero.
QString money(qint64 amount);
