#pragma once

#include <QProxyStyle>

// Application-wide part of the look: the DOS palette for every standard widget,
// a 3-pixel block text cursor, no focus rectangles, grid lines in the frame
// colour, flat scroll bars and no animations. Built on Fusion so it draws the same on any desktop.
class DOSStyle : public QProxyStyle {
    Q_OBJECT

public:
    DOSStyle();

    static QPalette dosPalette();

    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                    const QWidget* widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                  QStyleHintReturn* returnData = nullptr) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget = nullptr) const override;
    QPalette standardPalette() const override;
    void polish(QPalette& palette) override;
    using QProxyStyle::polish;
};
