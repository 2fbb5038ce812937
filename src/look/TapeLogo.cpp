#include "look/TapeLogo.h"

#include "look/DOS.h"

#include <QPainter>

namespace {

constexpr qreal gridWidth = 64;
constexpr qreal gridHeight = 40;

struct Outline {
    qreal x, y, w, h; // grid units, y growing upwards from the bottom edge
};

constexpr Outline outlines[] = {
    {1, 1, 62, 38},  // shell
    {1, 31, 62, 8},  // top band
    {9, 31, 46, 8},  // label
    {21, 9, 23, 16}, // window
};

const TapeLogo::Reel reelPattern = {"001110", "011010", "110000", "100110", "100010"};

constexpr qreal leftReel = 5;
constexpr qreal rightReel = 47;

} // namespace

TapeLogo::TapeLogo(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

const TapeLogo::Reel& TapeLogo::reel() {
    return reelPattern;
}

qreal TapeLogo::unit(const QSize& size) {
    return qMin(size.width() / gridWidth, size.height() / gridHeight);
}

void TapeLogo::paintEvent(QPaintEvent*) {
    const qreal u = unit(size());
    if (u <= 0)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const qreal ox = (width() - gridWidth * u) / 2;
    const qreal oy = (height() - gridHeight * u) / 2;
    // The grid's y grows upwards; the widget's downwards.
    const auto box = [&](qreal x, qreal y, qreal w, qreal h) {
        return QRectF(ox + x * u, oy + (gridHeight - y - h) * u, w * u, h * u);
    };

    // Outlines are stroked with width u centred on the rectangle's edges, as bands of
    // whole pixels so that every line comes out equally thick.
    const int thickness = qMax(1, qRound(u));
    const auto band = [&](qreal centre) {
        return qRound(centre - u / 2);
    };
    for (const Outline& outline : outlines) {
        const QRectF r = box(outline.x, outline.y, outline.w, outline.h);
        const int left = band(r.left()), right = band(r.right());
        const int top = band(r.top()), bottom = band(r.bottom());
        const int w = right - left + thickness, h = bottom - top + thickness;
        painter.fillRect(QRect(left, top, w, thickness), DOS::text());
        painter.fillRect(QRect(left, bottom, w, thickness), DOS::text());
        painter.fillRect(QRect(left, top, thickness, h), DOS::text());
        painter.fillRect(QRect(right, top, thickness, h), DOS::text());
    }

    for (int r = 0; r < int(reelPattern.size()); ++r) {
        for (int c = 0; c < 6; ++c) {
            if (reelPattern[r][c] != '1')
                continue;
            const qreal y = 27 - 2 * r;
            painter.fillRect(box(leftReel + 1.5 * c, y, 1.5, 2), DOS::text());
            // The right reel is the left one mirrored.
            painter.fillRect(box(rightReel + 1.5 * (5 - c), y, 1.5, 2), DOS::text());
        }
    }
}
