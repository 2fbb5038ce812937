#include "look/PixelTitle.h"

#include "look/DOS.h"

#include <QPainter>
#include <cmath>

namespace {

// clang-format off
const PixelTitle::Glyph letterC = {"01110", "10001", "10000", "10000", "10000", "10001", "01110"};
const PixelTitle::Glyph letterI = {"11111", "00100", "00100", "00100", "00100", "00100", "11111"};
const PixelTitle::Glyph letterN = {"10001", "11001", "10101", "10011", "10001", "10001", "10001"};
const PixelTitle::Glyph letterE = {"11111", "10000", "10000", "11110", "10000", "10000", "11111"};
const PixelTitle::Glyph letterF = {"11111", "10000", "10000", "11110", "10000", "10000", "10000"};
const PixelTitle::Glyph letterT = {"11111", "00100", "00100", "00100", "00100", "00100", "00100"};
const PixelTitle::Glyph letterA = {"01110", "10001", "10001", "11111", "10001", "10001", "10001"};
const PixelTitle::Glyph blank   = {"00000", "00000", "00000", "00000", "00000", "00000", "00000"};
// clang-format on

} // namespace

PixelTitle::PixelTitle(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QString PixelTitle::word() {
    return QStringLiteral("CINEFITA");
}

const PixelTitle::Glyph& PixelTitle::glyph(QChar letter) {
    switch (letter.unicode()) {
    case 'C':
        return letterC;
    case 'I':
        return letterI;
    case 'N':
        return letterN;
    case 'E':
        return letterE;
    case 'F':
        return letterF;
    case 'T':
        return letterT;
    case 'A':
        return letterA;
    default:
        return blank;
    }
}

int PixelTitle::pixelSize(const QSize& size) {
    return int(std::floor(qMin(size.width() / 49.0, size.height() / 8.0)));
}

void PixelTitle::paintEvent(QPaintEvent*) {
    const int p = pixelSize(size());
    if (p <= 0)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const qreal x0 = (width() - 47.0 * p) / 2;
    // Centred vertically, so counting rows from the top lands on the same squares
    // as counting from the bottom.
    const qreal y0 = (height() - 7.0 * p) / 2;
    const QString letters = word();
    for (int i = 0; i < letters.size(); ++i) {
        const Glyph& rows = glyph(letters.at(i));
        for (int r = 0; r < 7; ++r)
            for (int c = 0; c < 5; ++c)
                if (rows[r][c] == '1')
                    painter.fillRect(QRectF(x0 + (6 * i + c) * p, y0 + r * p, p, p), DOS::text());
    }
}
