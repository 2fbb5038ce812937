#include "look/DOS.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QScreen>
#include <QtTest>

namespace {

// The size a font asks for on the screen, in device-independent pixels.
qreal screenPixels(const QFont& font) {
    return font.pointSizeF() * QGuiApplication::primaryScreen()->logicalDotsPerInchY() / 72.0;
}

bool white(const QImage& image, int x, int y) {
    return image.pixel(x, y) == qRgba(255, 255, 255, 255);
}

} // namespace

class TestDOS : public QObject {
    Q_OBJECT

private slots:
    // Runs first: nothing is registered yet.
    void fallbackFontBeforeRegistration() {
        QVERIFY(!DOS::fontRegistered());
        const QFont font = DOS::font(14);
        QCOMPARE(screenPixels(font), 14.0);
        QCOMPARE(font.family(), QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    }

    void embeddedFontWinsOverEnvironment() {
        qputenv("CINEFITA_FONT_PATH", "/nonexistent/other.ttf");
        DOS::registerFont();
        DOS::registerFont(); // a second call changes nothing
        qunsetenv("CINEFITA_FONT_PATH");
        QVERIFY(DOS::fontRegistered());
        QCOMPARE(DOS::postScriptName(DOS::font(14)), QStringLiteral("VT323-Regular"));
        QCOMPARE(QFontInfo(DOS::font(14)).family(), QStringLiteral("VT323"));
    }

    void fontSizes_data() {
        QTest::addColumn<qreal>("requested");
        QTest::addColumn<qreal>("pixels");
        // Not rounded: 20 or 23 would be the fault.
        QTest::newRow("list cells") << 14.0 << 20.3;
        QTest::newRow("fields") << 16.0 << 23.2;
        QTest::newRow("tagline") << 20.0 << 29.0;
    }

    void fontSizes() {
        QFETCH(qreal, requested);
        QFETCH(qreal, pixels);
        QVERIFY(DOS::fontRegistered());
        QCOMPARE(screenPixels(DOS::font(requested)), pixels);
    }

    void threshold_data() {
        QTest::addColumn<float>("red");
        QTest::addColumn<float>("green");
        QTest::addColumn<float>("blue");
        QTest::addColumn<bool>("white");
        QTest::newRow("grey 0.75") << 0.75f << 0.75f << 0.75f << true;
        QTest::newRow("one component 0.74") << 0.74f << 0.75f << 0.75f << false;
        QTest::newRow("mean reaches 0.75") << 1.0f << 1.0f << 0.25f << true;
    }

    void threshold() {
        QFETCH(float, red);
        QFETCH(float, green);
        QFETCH(float, blue);
        QFETCH(bool, white);
        // Written as floats: 0.75 in 8 or 16 bits would already be a little below 0.75.
        QImage picture(3, 2, QImage::Format_RGBA32FPx4);
        picture.fill(Qt::black);
        auto* samples = reinterpret_cast<float*>(picture.scanLine(1));
        samples[4] = red;
        samples[5] = green;
        samples[6] = blue;
        samples[7] = 1.0f;

        const QImage strokes = DOS::whiteStrokes(picture);
        QCOMPARE(strokes.format(), QImage::Format_RGBA8888);
        const uchar* target = strokes.constScanLine(1) + 4;
        const uchar expected = white ? 255 : 0;
        for (int k = 0; k < 4; ++k)
            QCOMPARE(target[k], expected);
        QCOMPARE(strokes.pixel(0, 0), 0u); // black stays transparent
    }

    void dialogIconFitsAsPureStrokes() {
        // Also proves the picture is linked into the executable.
        const std::optional<QImage> icon = DOS::dialogIcon();
        QVERIFY(icon.has_value());
        const QImage fitted = DOS::fittedStrokes(*icon, 64);
        QCOMPARE(fitted.size(), QSize(64, 64));
        // Every 2 x 2 block of the picture with a stroke pixel in it gives one white pixel,
        // and every other pixel is transparent.
        for (int y = 0; y < 64; ++y)
            for (int x = 0; x < 64; ++x) {
                const bool stroke = white(*icon, 2 * x, 2 * y) || white(*icon, 2 * x + 1, 2 * y) ||
                                    white(*icon, 2 * x, 2 * y + 1) || white(*icon, 2 * x + 1, 2 * y + 1);
                QCOMPARE(fitted.pixel(x, y), stroke ? qRgba(255, 255, 255, 255) : 0u);
            }
    }
};

QTEST_MAIN(TestDOS)
#include "test_dos.moc"
