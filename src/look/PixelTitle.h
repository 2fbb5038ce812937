#pragma once

#include <QWidget>
#include <array>

// The brand word "CINEFITA" in big square pixels from a built-in 5 x 7 font,
// centred and scaled by whole pixels to fit. Draws no background.
class PixelTitle : public QWidget {
    Q_OBJECT

public:
    using Glyph = std::array<const char*, 7>; // rows top to bottom, "1" = lit

    explicit PixelTitle(QWidget* parent = nullptr);

    static QString word();
    static const Glyph& glyph(QChar letter);
    // Side of one square: the word is 47 columns plus one of margin each side,
    // 7 rows plus margin. 0 when the view is too small to draw anything.
    static int pixelSize(const QSize& size);

    QSize sizeHint() const override { return QSize(760, 128); }

protected:
    void paintEvent(QPaintEvent* event) override;
};
