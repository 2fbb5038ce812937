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
        const QImage image = render::of(title);
        QCOMPARE(count(image, rgb(DOS::text())) > 0, pixel > 0);
        // Hard-edged squares: nothing but lit and transparent pixels.
        QCOMPARE(count(image, rgb(DOS::text())) + count(image, 0u), size.width() * size.height());
    }

    void tapeLogoUpsideUp() {
        TapeLogo logo;
        logo.resize(128, 80); // u = 2, no margin
        const QImage image = render::of(logo);
        // The label's left edge (x = 9 units) runs through the top band, not the bottom one.
        QVERIFY(lit(image, 18, 10));
        QVERIFY(!lit(image, 18, 70));
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
        const QRect title = frame(splash.title());
        const QRect enter = frame(splash.enterButton());
        QCOMPARE(title.width(), splash.content()->width()); // the title spans the stack
        QCOMPARE(PixelTitle::pixelSize(title.size()), 15);
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
    }
};

QTEST_MAIN(TestSplash)
#include "test_splash.moc"
