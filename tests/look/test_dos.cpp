#include "look/DOS.h"

#include <QFile>
#include <QFontDatabase>
#include <QFontInfo>
#include <QtTest>

class TestDOS : public QObject {
    Q_OBJECT

private slots:
    // Runs first: nothing is registered yet.
    void fallbackFontBeforeRegistration();
    void resourcesAreLinkedIn();
    void embeddedFontWinsOverEnvironment();
    void fontSizes_data();
    void fontSizes();
    void palette_data();
    void palette();
    void greenRolesShareOneValue();
    void threshold_data();
    void threshold();
};

void TestDOS::fallbackFontBeforeRegistration() {
    QVERIFY(!DOS::fontRegistered());
    const QFont font = DOS::font(14);
    QCOMPARE(font.pixelSize(), 14);
    QCOMPARE(font.family(), QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    QCOMPARE(font.weight(), QFont::Normal);
}

void TestDOS::resourcesAreLinkedIn() {
    // A static library's resources only count when they reach the executable.
    QVERIFY(QFile(":/VT323-Regular.ttf").exists());
    QVERIFY(QFile(":/VHS-reference.png").exists());
}

void TestDOS::embeddedFontWinsOverEnvironment() {
    qputenv("CINEFITA_FONT_PATH", "/nonexistent/other.ttf");
    DOS::registerFont();
    DOS::registerFont(); // a second call changes nothing
    qunsetenv("CINEFITA_FONT_PATH");
    QVERIFY(DOS::fontRegistered());
    QCOMPARE(DOS::fontFile(), QStringLiteral(":/VT323-Regular.ttf"));
    QCOMPARE(DOS::postScriptName(DOS::font(14)), QStringLiteral("VT323-Regular"));
    QCOMPARE(QFontInfo(DOS::font(14)).family(), QStringLiteral("VT323"));
}

void TestDOS::fontSizes_data() {
    QTest::addColumn<qreal>("requested");
    QTest::addColumn<int>("pixels");
    QTest::newRow("list cells") << 14.0 << 20; // 20.3
    QTest::newRow("fields") << 16.0 << 23;     // 23.2
    QTest::newRow("tagline") << 20.0 << 29;
    QTest::newRow("notice") << 12.0 << 17; // 17.4
    QTest::newRow("brand") << 32.0 << 46;  // 46.4
}

void TestDOS::fontSizes() {
    QFETCH(qreal, requested);
    QFETCH(int, pixels);
    QVERIFY(DOS::fontRegistered());
    QCOMPARE(DOS::font(requested).pixelSize(), pixels);
}

void TestDOS::palette_data() {
    QTest::addColumn<QColor>("colour");
    QTest::addColumn<int>("red");
    QTest::addColumn<int>("green");
    QTest::addColumn<int>("blue");
    QTest::newRow("blue") << DOS::blue() << 1 << 4 << 11;
    QTest::newRow("ink") << DOS::ink() << 0 << 2 << 5;
    QTest::newRow("yellow") << DOS::yellow() << 51 << 255 << 89;
    QTest::newRow("border") << DOS::border() << 23 << 107 << 51;
}

void TestDOS::palette() {
    QFETCH(QColor, colour);
    QFETCH(int, red);
    QFETCH(int, green);
    QFETCH(int, blue);
    // As it lands in an 8-bit image.
    QImage pixel(1, 1, QImage::Format_ARGB32);
    pixel.fill(colour);
    QCOMPARE(pixel.pixel(0, 0), qRgb(red, green, blue));
}

void TestDOS::greenRolesShareOneValue() {
    QCOMPARE(DOS::text(), DOS::yellow());
    QCOMPARE(DOS::shortcut(), DOS::yellow());
    QCOMPARE(DOS::selection(), DOS::yellow());
}

void TestDOS::threshold_data() {
    QTest::addColumn<float>("red");
    QTest::addColumn<float>("green");
    QTest::addColumn<float>("blue");
    QTest::addColumn<bool>("white");
    QTest::newRow("grey 0.75") << 0.75f << 0.75f << 0.75f << true;
    QTest::newRow("one component 0.74") << 0.74f << 0.75f << 0.75f << false;
    QTest::newRow("mean reaches 0.75") << 1.0f << 1.0f << 0.25f << true;
    QTest::newRow("pure green") << 0.0f << 1.0f << 0.0f << false;
    QTest::newRow("white") << 1.0f << 1.0f << 1.0f << true;
    QTest::newRow("black") << 0.0f << 0.0f << 0.0f << false;
}

void TestDOS::threshold() {
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
    QCOMPARE(strokes.size(), picture.size());
    QCOMPARE(strokes.format(), QImage::Format_RGBA8888);
    const uchar* target = strokes.constScanLine(1) + 4;
    const uchar expected = white ? 255 : 0;
    for (int k = 0; k < 4; ++k)
        QCOMPARE(target[k], expected);
    QCOMPARE(strokes.pixel(0, 0), 0u); // black stays transparent
}

QTEST_MAIN(TestDOS)
#include "test_dos.moc"
