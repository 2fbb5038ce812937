#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>

// Helpers for the look tests: paint a widget into an image and count colours.
namespace render {

// The widget's own painting and its children, over the given ground.
inline QImage of(QWidget& widget, const QColor& ground = Qt::transparent) {
    QImage image(widget.size(), QImage::Format_ARGB32);
    image.fill(ground);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

inline int count(const QImage& image, const QRect& area, QRgb colour) {
    int found = 0;
    const QRect inside = area & image.rect();
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        for (int x = inside.left(); x <= inside.right(); ++x)
            found += image.pixel(x, y) == colour;
    return found;
}

inline int count(const QImage& image, QRgb colour) {
    return count(image, image.rect(), colour);
}

inline QRgb rgb(const QColor& colour) {
    return colour.rgba();
}

} // namespace render
