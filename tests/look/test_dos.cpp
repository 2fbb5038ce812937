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
    }

    void fontSizes() {
        QFETCH(qreal, requested);
        QFETCH(qreal, pixels);
        QVERIFY(DOS::fontRegistered());
        QCOMPARE(screenPixels(DOS::font(requested)), pixels);
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
