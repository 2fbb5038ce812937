#include "print/Labels.h"

#include "print/PrintPage.h"
#include "records/Codes.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

namespace {

// Code 39 patterns: nine elements, bar first, most significant bit first, 1 = wide.
std::optional<int> code39Pattern(QChar c) {
    switch (c.unicode()) {
    case u'0':
        return 52;
    case u'1':
        return 289;
    case u'2':
        return 97;
    case u'3':
        return 352;
    case u'4':
        return 49;
    case u'5':
        return 304;
    case u'6':
        return 112;
    case u'7':
        return 37;
    case u'8':
        return 292;
    case u'9':
        return 100;
    case u'C':
        return 328;
    case u'O':
        return 274;
    case u'D':
        return 25;
    case u'L':
        return 67;
    case u'I':
        return 76;
    case u'-':
        return 133;
    case u'*':
        return 148;
    default:
        return std::nullopt;
    }
}

// Plain decimal with "." for the forms' answers; no grouping, no exponent games.
std::optional<double> decimalNumber(QString text) {
    text.replace(u',', u'.');
    bool ok = false;
    const double value = QLocale::c().toDouble(text, &ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace

QString barcodeSVG(const QString& value) {
    const QString encoded = u'*' + value + u'*';
    QList<int> patterns;
    for (const QChar c : encoded) {
        const auto pattern = code39Pattern(c);
        if (!pattern)
            return QString();
        patterns.append(*pattern);
    }
    int x = 10;
    QString bars;
    for (const int pattern : patterns) {
        for (int i = 0; i < 9; ++i) {
            const int w = (pattern >> (8 - i)) & 1 ? 3 : 1;
            if (i % 2 == 0)
                bars += QStringLiteral("<rect x='%1' y='0' width='%2' height='30'/>").arg(x).arg(w);
            x += w;
        }
        x += 1;
    }
    const int total = x + 9;
    // Only characters of the table get this far, so the label needs no escaping.
    return QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 ") + QString::number(total) +
           QStringLiteral(" 30' preserveAspectRatio='none' aria-label='") + value + QStringLiteral("' style='width:") +
           realNumberText(total * 0.25) +
           QStringLiteral("mm;height:7.5mm;display:block;background:white;fill:black'>") + bars +
           QStringLiteral("</svg>");
}

double requiredLabelWidth(const QList<Film>& films) {
    double widest = 70.0;
    for (const Film& film : films) {
        const QString last = copyCode(film.code, film.copies);
        widest = std::max(widest, double(last.size() + 2) * 4.0 + 6.75);
    }
    return widest;
}

QString labelDocument(const QList<Film>& films, const QString& shopName, double width, double height) {
    const QString style = QStringLiteral("<section class='label' style='width:") + realNumberText(width) +
                          QStringLiteral("mm;height:") + realNumberText(height) +
                          QStringLiteral("mm'><p class='name'>");
    const QString shop = escapedHTML(shopName);
    QString labels;
    for (const Film& film : films) {
        for (qint64 copy = 1; copy <= film.copies; ++copy) {
            labels += style + shop + QStringLiteral(" — ") + escapedHTML(film.title) + QStringLiteral("</p>") +
                      barcodeSVG(copyCode(film.code, copy)) + QStringLiteral("<p class='code'>") +
                      inventoryCode(film.code) + QStringLiteral(" / EX. ") + QString::number(copy) +
                      QStringLiteral("</p></section>");
        }
    }
    const QString title = QStringLiteral("ETIQUETAS VHS — ") + realNumberText(width) + QStringLiteral(" × ") +
                          realNumberText(height) + QStringLiteral(" mm");
    return printDocument(title, labels);
}

std::optional<LabelSize> chosenLabelSize(const QString& widthText, const QString& heightText, const Film& film) {
    const auto width = decimalNumber(widthText);
    const auto height = decimalNumber(heightText);
    if (!width || !height)
        return std::nullopt;
    if (*width < requiredLabelWidth({film}) || *width > 190.0 || *height < 18.0 || *height > 50.0)
        return std::nullopt;
    return LabelSize{*width, *height};
}

QString proposedLabelWidth(const Film& film) {
    return QString::number(qint64(std::ceil(requiredLabelWidth({film}))));
}
