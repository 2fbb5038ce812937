#pragma once

#include <QComboBox>

// A pop-up list drawn as a text-mode cell: dark ground, one-pixel frame, the chosen
// item in the pixel font and a small solid arrow pointing down near the right edge.
class DOSPopup : public QComboBox {
    Q_OBJECT

public:
    explicit DOSPopup(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
