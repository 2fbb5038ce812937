#include "look/CRTOverlay.h"
#include "look/DOS.h"
#include "look/DOSButton.h"
#include "look/PixelTitle.h"
#include "look/Render.h"
#include "look/SplashView.h"
#include "look/TapeLogo.h"

#include <QSignalSpy>
#include <QtTest>

using render::count;
using render::rgb;

namespace {
bool lit(const QImage& image, int x, int y) {
    return image.pixel(x, y) == rgb(DOS::text());
}

} // namespace

class TestSplash : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { DOS::registerFont(); }

    void titlePixelSize_data() {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("pixel");
        QTest::newRow("490 x 80") << QSize(490, 80) << 10;
        QTest::newRow("48 x 8, too small") << QSize(48, 8) << 0;
        QTest::newRow("natural 760 x 128") << QSize(760, 128) << 15;
        QTest::newRow("wide, height limits") << QSize(1200, 128) << 16;
    }

    void titlePixelSize() {
        QFETCH(QSize, size);
        QFETCH(int, pixel);
        QCOMPARE(PixelTitle::pixelSize(size), pixel);
        PixelTitle title;
        title.resize(size);
        QCOMPARE(count(render::of(title), rgb(DOS::text())) > 0, pixel > 0);
    }

    void titleLightsExactlyTheGlyphs() {
        PixelTitle title;
        title.resize(490, 80); // p = 10, origin (10, 5)
        const QImage image = render::of(title);
        const QString word = PixelTitle::word();
        for (int i = 0; i < word.size(); ++i) {
            const PixelTitle::Glyph& glyph = PixelTitle::glyph(word.at(i));
            for (int r = 0; r < 7; ++r)
                for (int c = 0; c < 5; ++c) {
                    const int x = 10 + (6 * i + c) * 10;
                    const int y = 5 + r * 10;
                    const bool expected = glyph[r][c] == '1';
                    // Both corners of the square, so squares are whole and touch without gaps.
                    QVERIFY2(lit(image, x, y) == expected && lit(image, x + 9, y + 9) == expected,
                             qPrintable(QString("%1 row %2 column %3").arg(word.at(i)).arg(r).arg(c)));
                }
        }
        // Nothing outside the word's 470 x 70 area, and no other colour anywhere.
        const QRect word470(10, 5, 470, 70);
        QCOMPARE(count(image, word470, rgb(DOS::text())), count(image, rgb(DOS::text())));
        QCOMPARE(count(image, rgb(DOS::text())) + count(image, 0u), 490 * 80);
    }

    void tapeLogo() {
        TapeLogo logo;
        logo.resize(128, 80); // u = 2, no margin
        const QImage image = render::of(logo);
        // Upside up: the label's left edge (x = 9 units) runs through the top band.
        QVERIFY(lit(image, 18, 10));
        QVERIFY(!lit(image, 18, 70));
        // The shell's outline on both sides, the window in the lower middle.
        QVERIFY(lit(image, 2, 40) && lit(image, 125, 40));
        QVERIFY(lit(image, 42, 46) && lit(image, 88, 46));
        QVERIFY(!lit(image, 64, 46));
        // Reel row 0 ("001110") is the top row of the left reel: blocks at columns 2 to 4.
        QVERIFY(!lit(image, 11, 23) && !lit(image, 14, 23));
        QVERIFY(lit(image, 17, 23) && lit(image, 20, 23) && lit(image, 23, 23));
        QVERIFY(!lit(image, 26, 23));
        // The right reel (from x = 47 units) mirrors the left one (from x = 5), 9 units wide.
        for (int y = 22; y < 42; ++y)
            for (int d = 0; d < 18; ++d)
                QCOMPARE(lit(image, 94 + 17 - d, y), lit(image, 10 + d, y));
    }

    void scanLines_data() {
        QTest::addColumn<int>("height");
        QTest::addColumn<QList<int>>("lines");
        QTest::newRow("10") << 10 << QList<int>{0, 4, 8};
        QTest::newRow("8") << 8 << QList<int>{0, 4};
        QTest::newRow("1") << 1 << QList<int>{0};
    }

    void scanLines() {
        QFETCH(int, height);
        QFETCH(QList<int>, lines);
        CRTOverlay overlay;
        overlay.resize(30, height);
        const QImage image = render::of(overlay, Qt::white);
        const QRgb dimmed = image.pixel(0, 0);
        QVERIFY(qRed(dimmed) >= 222 && qRed(dimmed) <= 226); // black at 0.12 over white
        for (int y = 0; y < height; ++y) {
            const QRgb expected = lines.contains(y) ? dimmed : qRgb(255, 255, 255);
            QCOMPARE(count(image, QRect(0, y, 30, 1), expected), 30);
        }
    }

    void clicksPassThroughOverlay() {
        QWidget screen;
        screen.resize(300, 200);
        auto* button = new DOSButton("[F9] AJUDA", &screen);
        button->setGeometry(50, 50, 140, 34);
        auto* overlay = new CRTOverlay(&screen);
        overlay->setGeometry(screen.rect());
        overlay->raise();
        screen.show();
        QVERIFY(QTest::qWaitForWindowExposed(&screen));
        QSignalSpy clicked(button, &QPushButton::clicked);
        QTest::mouseClick(screen.windowHandle(), Qt::LeftButton, {}, QPoint(60, 60));
        QCOMPARE(clicked.count(), 1);
    }

    void splashLayout() {
        SplashView splash;
        splash.resize(1260, 850);
        splash.show();
        QVERIFY(QTest::qWaitForWindowExposed(&splash));
        const auto frame = [&](QWidget* widget) {
            return QRect(widget->mapTo(&splash, QPoint()), widget->size());
        };
        const auto centredAt = [&](qreal centreY) {
            const QRect stack = frame(splash.content());
            return qAbs((stack.top() + stack.bottom() + 1) / 2 - qRound(centreY)) <= 1 &&
                   qAbs(stack.center().x() - 630) <= 1;
        };
        const QRect logo = frame(splash.logo());
        const QRect title = frame(splash.title());
        const QRect enter = frame(splash.enterButton());
        QCOMPARE(title.width(), splash.content()->width()); // the title spans the stack
        QCOMPARE(PixelTitle::pixelSize(title.size()), 15);
        QCOMPARE(title.top() - (logo.bottom() + 1), 72);
        QCOMPARE(logo.center().x(), 630 - 1);
        QVERIFY(qAbs(enter.center().x() - 630) <= 1);
        QVERIFY(centredAt(0.84 * 425));
        QCOMPARE(frame(splash.content()).bottom(), enter.bottom());

        QSignalSpy entered(&splash, &SplashView::entered);
        splash.enterButton()->click();
        QCOMPARE(entered.count(), 1);

        // Hidden (as on the home screen), the button leaves no gap: the rest is centred again.
        const int before = splash.content()->height();
        splash.enterButton()->hide();
        QTRY_COMPARE(splash.content()->height(), before - enter.height() - 24);
        QVERIFY(centredAt(0.84 * 425));

        // A 3-pixel border the shell can switch off.
        QImage image = render::of(splash);
        QCOMPARE(image.pixel(2, 425), rgb(DOS::border()));
        QCOMPARE(image.pixel(3, 425), rgb(DOS::blue()));
        splash.setBorderWidth(0);
        QCOMPARE(render::of(splash).pixel(0, 425), rgb(DOS::blue()));
    }
};

QTEST_MAIN(TestSplash)
#include "test_splash.moc"
