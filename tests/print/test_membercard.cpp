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
    // The header's written numbers follow from the shop name's length alone.
    void header_data() {
        QTest::addColumn<QString>("shop");
        QTest::addColumn<QString>("brandLength");
        QTest::addColumn<QString>("iconX");
        QTest::addColumn<QString>("brandX");
        QTest::newRow("eight letters") << "LOCADORA"
                                       << "33.2"
                                       << "19.699999999999996"
                                       << "32.699999999999996";
        QTest::newRow("four letters") << "Loja"
                                      << "20.0"
                                      << "26.299999999999997"
                                      << "39.3";
        QTest::newRow("fourteen letters") << "ABCDEFGHIJKLMN"
                                          << "55.0"
                                          << "8.799999999999997"
                                          << "21.799999999999997";
        QTest::newRow("combining accents count once")
            << QStringLiteral("VI\u0301DEO E\u0301PICO") << "45.650000000000006"
            << "13.474999999999994"
            << "26.474999999999994";
    }
    void header() {
        QFETCH(QString, shop);
        QFETCH(QString, brandLength);
        QFETCH(QString, iconX);
        QFETCH(QString, brandX);
        const QString svg = memberCardSVG(customer("Ana"), shop);
        QCOMPARE(attribute(svg, QStringLiteral("textLength='")), brandLength);
        QCOMPARE(attribute(svg, QStringLiteral("width='10' height='6' x='")), iconX);
        QCOMPARE(attribute(svg, QStringLiteral("</svg><text x='")), brandX);
    }

    void shopNameUpperCasedAndEscaped_data() {
        QTest::addColumn<QString>("shop");
        QTest::addColumn<QString>("shown");
        QTest::newRow("accents and ampersand") << "Vídeo & Cia"
                                               << "VÍDEO &amp; CIA";
        QTest::newRow("sharp s") << "Straße <1>"
                                 << "STRASSE &lt;1&gt;";
    }
    void shopNameUpperCasedAndEscaped() {
        QFETCH(QString, shop);
        QFETCH(QString, shown);
        const QString svg = memberCardSVG(customer("Ana"), shop);
        QVERIFY(svg.contains(QStringLiteral("lengthAdjust='spacingAndGlyphs'>") + shown + QStringLiteral("</text>")));
    }

    void fontSizes_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("phone");
        QTest::addColumn<QString>("nameSize");
        QTest::addColumn<QString>("phoneSize");
        QTest::newRow("short") << QString(14, u'A') << "(11) 987654321"
                               << "3.6"
                               << "3.5";
        QTest::newRow("long name") << QString(80, u'A') << ""
                                   << "1.4583333333333333"
                                   << "3.5";
        QTest::newRow("long phone") << "Ana"
                                    << "(11) 98765-4321 ramal 22"
                                    << "3.6"
                                    << "2.430555555555556";
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

    void codeAndBars() {
        const QString svg = memberCardSVG(customer("Ana", QString(), std::nullopt), QString());
        QVERIFY(svg.contains("font-size='3.5'>CLI-0000</text>"));
        // CLI-0000 centred: 179 units, the start character's bars first.
        QVERIFY(svg.contains("<g transform='translate(20.424999999999997 37.6) scale(0.25)'><rect x='10' y='0' "
                             "width='1' height='30'/><rect x='14' y='0' width='1' height='30'/><rect x='16' "));
        const QString group = svg.mid(svg.indexOf("<g "), svg.indexOf("</g>") - svg.indexOf("<g "));
        QCOMPARE(group.count("<rect"), 10 * 5);
        // Reel and letter pixels at their places, with two decimals.
        QVERIFY(svg.contains("<rect x='8.80' y='16.00' width='1.4' height='1.8'/>"));
        QVERIFY(svg.contains("<rect x='43.50' y='21.00' width='1.15' height='1.15'/>"));
    }

    void pageOfCards() {
        const QString page = memberDocument({customer("Ana"), customer("Bia", QString(), 2)}, "LOCADORA");
        QCOMPARE(page.count("<section class='card'><svg "), 2);
        QVERIFY(page.indexOf("'>Ana</text>") > 0 && page.indexOf("'>Ana</text>") < page.indexOf("'>Bia</text>"));
        QVERIFY(page.contains("font-size='3.5'>CLI-0002</text>"));
        QVERIFY(page.contains(".card{width:85.6mm;height:54mm;"));
    }
};

QTEST_APPLESS_MAIN(TestMemberCard)
#include "test_membercard.moc"
