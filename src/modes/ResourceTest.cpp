#include "modes/ModeChecks.h"
#include "modes/Modes.h"

#include "look/DOS.h"

#include <QGuiApplication>
#include <QImage>
#include <QPoint>
#include <cstdio>
#include <cstdlib>

namespace {

const QRgb opaqueWhite = qRgba(255, 255, 255, 255);

// Points of the tape picture (see resources/make-vhs-reference.py): on its strokes,
// and on the dark ground around and inside the cassette.
const QPoint strokePoints[] = {{64, 31}, {64, 32}, {6, 64}, {121, 64}, {64, 93}, {20, 44}, {43, 62}};
const QPoint groundPoints[] = {{0, 0}, {127, 0}, {0, 127}, {127, 127}, {64, 20}, {64, 110}, {43, 73}, {64, 55}};

int fail(const char* message) {
    std::fprintf(stderr, "%s\n", message);
    return 1;
}

bool bright(QRgb pixel) {
    return qRed(pixel) + qGreen(pixel) + qBlue(pixel) >= 3 * 0.75 * 255;
}

int check() {
    DOS::registerFont();
    if (!DOS::fontRegistered())
        return fail("Bundled pixel font was not registered");
    if (!DOS::fontFile().startsWith(QLatin1Char(':')))
        return fail("Pixel font did not come from the program's resources");
    const QFont byName(QStringLiteral("VT323"));
    if (DOS::postScriptName(byName) != QLatin1String("VT323-Regular"))
        return fail("Font made by name does not report VT323-Regular");
    if (DOS::postScriptName(DOS::font(14)) != QLatin1String("VT323-Regular"))
        return fail("DOS font is not the pixel font");

    const QImage picture(QStringLiteral(":/VHS-reference.png"));
    if (picture.isNull())
        return fail("VHS reference picture missing");
    const std::optional<QImage> icon = DOS::dialogIcon();
    if (!icon)
        return fail("VHS icon missing");
    if (icon->size() != picture.size() || icon->format() != QImage::Format_RGBA8888)
        return fail("VHS icon has the wrong size or pixel format");

    const QImage source = picture.convertToFormat(QImage::Format_RGB32);
    int strokes = 0;
    for (int y = 0; y < icon->height(); ++y) {
        for (int x = 0; x < icon->width(); ++x) {
            const QRgb pixel = icon->pixel(x, y);
            const bool white = pixel == opaqueWhite;
            if (!white && pixel != 0)
                return fail("VHS icon has a pixel that is neither white nor transparent");
            if (white != bright(source.pixel(x, y)))
                return fail("VHS icon strokes do not follow the bright parts of the picture");
            strokes += white;
        }
    }
    for (const QPoint& point : strokePoints)
        if (icon->pixel(point) != opaqueWhite)
            return fail("VHS icon lost a stroke of the cassette");
    for (const QPoint& point : groundPoints)
        if (icon->pixel(point) != 0)
            return fail("VHS icon background is not transparent");
    const int total = icon->width() * icon->height();
    if (strokes < total / 20 || strokes > total / 4)
        return fail("VHS icon strokes cover an unlikely share of the picture");
    return 0;
}

} // namespace

int runResourceTest(int argc, char** argv) {
    // Fonts need an application object, not a screen.
    drawOffscreenWithoutDisplay();
    QGuiApplication application(argc, argv);
    const int status = check();
    if (status == 0)
        std::puts("PASS: bundled pixel font, exact VHS white strokes and transparent background");
    return status;
}
