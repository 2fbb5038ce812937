#pragma once

#include <QWidget>
#include <array>

// A front view of a tape cassette drawn in outlines and square blocks on a grid of
// 64 x 40 units, centred in the view. Draws no background.
class TapeLogo : public QWidget {
    Q_OBJECT

public:
    using Reel = std::array<const char*, 5>; // rows top to bottom, 6 columns, "1" = block

    explicit TapeLogo(QWidget* parent = nullptr);

    static const Reel& reel();
    // Side of one grid unit in pixels for a view of that size.
    static qreal unit(const QSize& size);

    QSize sizeHint() const override { return QSize(110, 68); }

protected:
    void paintEvent(QPaintEvent* event) override;
};
