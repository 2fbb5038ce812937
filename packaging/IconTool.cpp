// Draws the program's icon at one size into a PNG file, at build time:
//   cinefita_icon SIZE FILE
// The tape is the splash's own TapeLogo, on the panels' navy behind a dim frame,
// so the menu icon and the program can never drift apart.
#include "look/DOS.h"
#include "look/TapeLogo.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cstdio>

namespace {

QImage drawIcon(int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing, true);
        const qreal frame = qMax<qreal>(1, size / 48.0);
        const QRectF ground = QRectF(0, 0, size, size).adjusted(frame / 2, frame / 2, -frame / 2, -frame / 2);
        QPainterPath shape;
        shape.addRoundedRect(ground, size / 8.0, size / 8.0);
        painter.fillPath(shape, DOS::blue());
        painter.strokePath(shape, QPen(DOS::border(), frame));
    }

    // The tape fills the middle eight tenths; the logo centres itself in its view.
    TapeLogo logo;
    const int margin = size / 10;
    logo.resize(size - 2 * margin, size - 2 * margin);
    logo.render(&image, QPoint(margin, margin), QRegion(), QWidget::DrawChildren);
    return image;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s SIZE FILE\n", argv[0]);
        return 2;
    }
    QApplication application(argc, argv);
    bool isNumber = false;
    const int size = QString::fromLocal8Bit(argv[1]).toInt(&isNumber);
    const QString file = QString::fromLocal8Bit(argv[2]);
    if (!isNumber || size < 16) {
        std::fprintf(stderr, "cinefita_icon: bad size %s\n", argv[1]);
        return 2;
    }
    if (!QDir().mkpath(QFileInfo(file).absolutePath()) || !drawIcon(size).save(file, "PNG")) {
        std::fprintf(stderr, "cinefita_icon: cannot write %s\n", argv[2]);
        return 1;
    }
    return 0;
}
