#include "print/MemberCard.h"
#include "support/Builders.h"

#include <QtTest>

namespace {

QString attribute(const QString& svg, const QString& before) {
    const qsizetype at = svg.indexOf(before);
    if (at < 0)
        return QStringLiteral("(missing)");
    const qsizetype start = at + before.size();
    return svg.mid(start, svg.indexOf(u'\'', start) - start);
}

} // namespace

class TestMemberCard : public QObject {
    Q_OBJECT

private slots:
    // The header's written numbers follow from the shop name's length, combining accents counting once
    // (brand's textLength, icon's x, brand's x).
    void headerCountsCharactersNotCodePoints() {
        const QString svg = memberCardSVG(customer("Ana"), QStringLiteral("VI\u0301DEO E\u0301PICO"));
        QCOMPARE((QStringList{attribute(svg, "textLength='"), attribute(svg, "width='10' height='6' x='"),
                              attribute(svg, "</svg><text x='")}),
                 (QStringList{"45.650000000000006", "13.474999999999994", "26.474999999999994"}));
    }

    void shopNameUpperCased() {
        const QString svg = memberCardSVG(customer("Ana"), QStringLiteral("Straße <1>"));
        QVERIFY(svg.contains(QStringLiteral("lengthAdjust='spacingAndGlyphs'>STRASSE &lt;1&gt;</text>")));
    }

    // A long name or phone shrinks its own line only.
    void longTextsShrinkTheirLine() {
        const auto sizes = [](const QString& name, const QString& phone) {
            const QString svg = memberCardSVG(customer(name, phone, 1), QStringLiteral("LOCADORA"));
            return QStringList{attribute(svg, "x='42.8' y='23.15' text-anchor='middle' font-family='Courier New, "
                                              "monospace' font-size='"),
                               attribute(svg, "<text x='43.55' y='33.15' font-family='Courier New, monospace' "
                                              "font-size='")};
        };
        QCOMPARE(sizes(QString(80, u'A'), ""), (QStringList{"1.4583333333333333", "3.5"}));
        QCOMPARE(sizes("Ana", "(11) 98765-4321 ramal 22"), (QStringList{"3.6", "2.430555555555556"}));
    }

    // The page's cards in order are the self-test's; a customer without a code yet still gets one.
    void cardWithoutCode() {
        const QString page = memberDocument({customer("Ana", QString(), std::nullopt)}, "LOCADORA");
        QVERIFY(page.contains("font-size='3.5'>CLI-0000</text>"));
    }
};

QTEST_APPLESS_MAIN(TestMemberCard)
#include "test_membercard.moc"
