#pragma once

#include <QWidget>

// Scan lines over whatever lies beneath: a one-pixel line of black at 12 % opacity
// every 4 pixels from the top. Mouse clicks pass through to the widgets below.
class CRTOverlay : public QWidget {
    Q_OBJECT

public:
    explicit CRTOverlay(QWidget* parent = nullptr);

    static constexpr int spacing = 4;
    static QColor lineColor();

protected:
    void paintEvent(QPaintEvent* event) override;
};
