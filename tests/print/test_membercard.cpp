#include "print/Labels.h"
#include "print/MemberCard.h"
#include "print/PrintPage.h"
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

    void fontSizes_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("phone");
        QTest::addColumn<QString>("nameSize");
        QTest::addColumn<QString>("phoneSize");
        const auto row = [](const char* name, const QString& customer, const char* phone, const char* nameSize,
                            const char* phoneSize) {
            QTest::newRow(name) << customer << QString(phone) << QString(nameSize) << QString(phoneSize);
        };
        row("long name", QString(80, u'A'), "", "1.4583333333333333", "3.5");
        row("long phone", "Ana", "(11) 98765-4321 ramal 22", "3.6", "2.430555555555556");
    }
    void fontSizes() {
        QFETCH(QString, name);
        QFETCH(QString, phone);
        QFETCH(QString, nameSize);
        QFETCH(QString, phoneSize);
        const QString svg = memberCardSVG(customer(name, phone, 1), QStringLiteral("LOCADORA"));
        QCOMPARE(attribute(svg, QStringLiteral("x='42.8' y='23.15' text-anchor='middle' font-family='Courier New, "
                                               "monospace' font-size='")),
                 nameSize);
        QVERIFY(
            svg.contains(QStringLiteral("<text x='43.55' y='33.15' font-family='Courier New, monospace' font-size='") +
                         phoneSize + QStringLiteral("'>") + escapedHTML(phone) + QStringLiteral("</text>")));
    }

    void pageOfCards() {
        const QString page = memberDocument({customer("Ana", QString(), std::nullopt), customer("Bia")}, "LOCADORA");
        QCOMPARE(page.count("<section class='card'><svg "), 2);
        QVERIFY(page.indexOf("'>Ana</text>") > 0 && page.indexOf("'>Ana</text>") < page.indexOf("'>Bia</text>"));
        QVERIFY(page.contains("font-size='3.5'>CLI-0000</text>")); // no code yet
    }
};

QTEST_APPLESS_MAIN(TestMemberCard)
#include "test_membercard.moc"
