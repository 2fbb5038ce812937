#pragma once

#include <QHeaderView>

// Table header drawn as text-mode cells: each section framed on the darkest ground,
// its title in the pixel font; the space after the last section is plain ground.
class DOSHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit DOSHeader(Qt::Orientation orientation = Qt::Horizontal, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    QSize sectionSizeFromContents(int logicalIndex) const override;
};
