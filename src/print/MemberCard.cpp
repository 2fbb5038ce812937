#include "print/MemberCard.h"

#include "print/Labels.h"
#include "print/PrintPage.h"
#include "records/Codes.h"

#include <algorithm>

namespace {

// One rect per set cell, row by row; the cell size is written as given.
QString bitmapRects(double x0, double y0, double dx, double dy, std::initializer_list<const char*> rows,
                    const QString& width, const QString& height) {
    QString rects;
    int row = 0;
    for (const char* cells : rows) {
        for (int column = 0; cells[column] != '\0'; ++column) {
            if (cells[column] != '1')
                continue;
            rects += QStringLiteral("<rect x='") + QString::number(x0 + column * dx, 'f', 2) + QStringLiteral("' y='") +
                     QString::number(y0 + row * dy, 'f', 2) + QStringLiteral("' width='") + width +
                     QStringLiteral("' height='") + height + QStringLiteral("'/>");
        }
        ++row;
    }
    return rects;
}

// The cassette in its own 64 × 40 space: outline, label strip, window, two
// reels and the letters VHS. The same for every card, so built once.
const QString& cassetteDrawing() {
    static const QString drawing = [] {
        QString d = QStringLiteral(
            "' y='5.5'><rect x='2' y='2' width='60' height='36' fill='none' stroke='black' stroke-width='1.6'/>"
            "<line x1='2' y1='9' x2='62' y2='9' stroke='black' stroke-width='1.6'/>"
            "<line x1='10' y1='2' x2='10' y2='9' stroke='black' stroke-width='1.6'/>"
            "<line x1='54' y1='2' x2='54' y2='9' stroke='black' stroke-width='1.6'/>"
            "<rect x='24' y='16' width='22' height='18' fill='none' stroke='black' stroke-width='1.6'/>");
        const QString reelWidth = QStringLiteral("1.4");
        const QString reelHeight = QStringLiteral("1.8");
        const QString letter = QStringLiteral("1.15");
        d += bitmapRects(6.00, 16.00, 1.4, 1.8,
                         {"001110", "011001", "110000", "100110", "100010", "100110", "110000", "011001", "001110"},
                         reelWidth, reelHeight);
        d += bitmapRects(49.40, 16.00, 1.4, 1.8,
                         {"011100", "100110", "000011", "011001", "010001", "011001", "000011", "100110", "011100"},
                         reelWidth, reelHeight);
        d += bitmapRects(25.10, 21.00, 1.15, 1.15, {"10001", "10001", "10001", "10001", "01010", "01010", "00100"},
                         letter, letter);
        d += bitmapRects(32.00, 21.00, 1.15, 1.15, {"10001", "10001", "10001", "11111", "10001", "10001", "10001"},
                         letter, letter);
        d += bitmapRects(38.90, 21.00, 1.15, 1.15, {"01111", "10000", "10000", "01110", "00001", "00001", "11110"},
                         letter, letter);
        d += QStringLiteral("</svg><text x='");
        return d;
    }();
    return drawing;
}

} // namespace

MemberCardLayout memberCardLayout(const Customer& customer, const QString& shopName) {
    MemberCardLayout layout{};
    layout.barcodeUnits = int(graphemeLength(customerCardCode(customer.code)) + 2) * 16 + 19;
    layout.barcodeX = (85.6 - layout.barcodeUnits * 0.25) / 2.0;
    layout.brandLength = std::min(55.0, std::max(20.0, double(graphemeLength(shopName)) * 4.15));
    layout.iconX = (85.6 - (layout.brandLength + 13.0)) / 2.0;
    layout.brandX = layout.iconX + 13.0;
    layout.nameSize = std::min(3.6, 70.0 / std::max(1.0, double(graphemeLength(customer.name)) * 0.6));
    layout.phoneSize = std::min(3.5, 35.0 / std::max(1.0, double(graphemeLength(customer.phone)) * 0.6));
    return layout;
}

QString memberCardSVG(const Customer& customer, const QString& shopName) {
    const MemberCardLayout layout = memberCardLayout(customer, shopName);
    const QString code = customerCardCode(customer.code);
    const QString name = escapedHTML(customer.name);

    // Only the bars of the barcode; the card places and scales them itself.
    QString bars = barcodeSVG(code);
    const qsizetype first = bars.indexOf(QStringLiteral("<rect"));
    const qsizetype end = bars.indexOf(QStringLiteral("</svg>"));
    bars = first >= 0 && end >= first ? bars.mid(first, end - first) : QString();

    return QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' width='85.6mm' height='54mm' viewBox='0 0 85.6 54' "
                          "role='img' aria-label='Carteirinha de ") +
           escapedAttribute(customer.name) +
           QStringLiteral("'><rect x='0.03' y='0.03' width='85.54' height='53.94' fill='white' stroke='black' "
                          "stroke-width='0.06'/><rect x='4.2' y='3.6' width='77.2' height='10.4' fill='none' "
                          "stroke='#222' stroke-width='0.16'/><svg viewBox='0 0 64 40' width='10' height='6' x='") +
           realNumberText(layout.iconX) + cassetteDrawing() + realNumberText(layout.brandX) +
           QStringLiteral("' y='11.2' font-family='Impact, sans-serif' font-size='8.2' font-weight='900' "
                          "textLength='") +
           realNumberText(layout.brandLength) + QStringLiteral("' lengthAdjust='spacingAndGlyphs'>") +
           escapedHTML(shopName.toUpper()) +
           QStringLiteral(
               "</text><rect x='26.4' y='12.7' width='32.8' height='3.7' fill='white'/><text x='42.8' y='15.1' "
               "text-anchor='middle' font-family='Courier New, monospace' font-size='2.7'>CARTEIRINHA DE "
               "SÓCIO</text><rect x='4.2' y='18.6' width='77.2' height='6.7' fill='none' stroke='#222' "
               "stroke-width='0.16'/><text x='42.8' y='23.15' text-anchor='middle' font-family='Courier New, "
               "monospace' font-size='") +
           realNumberText(layout.nameSize) + QStringLiteral("'>") + name +
           QStringLiteral(
               "</text><text x='4.2' y='28.55' font-family='Courier New, monospace' font-size='1.85'>CÓDIGO "
               "SÓCIO</text><text x='41.35' y='28.55' font-family='Courier New, monospace' "
               "font-size='1.85'>TELEFONE</text><rect x='4.2' y='29.3' width='35.9' height='4.9' fill='none' "
               "stroke='#222' stroke-width='0.16'/><rect x='41.35' y='29.3' width='40.05' height='4.9' fill='none' "
               "stroke='#222' stroke-width='0.16'/><text x='6.5' y='33.15' font-family='Courier New, monospace' "
               "font-size='3.5'>") +
           code + QStringLiteral("</text><text x='43.55' y='33.15' font-family='Courier New, monospace' font-size='") +
           realNumberText(layout.phoneSize) + QStringLiteral("'>") + escapedHTML(customer.phone) +
           QStringLiteral("</text><g transform='translate(") + realNumberText(layout.barcodeX) +
           QStringLiteral(" 37.6) scale(0.25)'>") + bars +
           QStringLiteral("</g><text x='42.8' y='49.7' text-anchor='middle' font-family='Courier New, monospace' "
                          "font-size='1.85'>CINEFITA • CLUBE VHS • <tspan font-weight='bold'>REBOBINE ANTES DE "
                          "DEVOLVER</tspan></text></svg>");
}

QString memberDocument(const QList<Customer>& customers, const QString& shopName) {
    QString body;
    for (const Customer& customer : customers)
        body +=
            QStringLiteral("<section class='card'>") + memberCardSVG(customer, shopName) + QStringLiteral("</section>");
    return printDocument(QStringLiteral("CARTEIRINHA — 85,6 × 54 mm"), body,
                         QStringLiteral(".card{width:85.6mm;height:54mm;margin:0;padding:0;break-inside:avoid;overflow:"
                                        "hidden}.card>svg{display:block;width:85.6mm;height:54mm}"));
}
