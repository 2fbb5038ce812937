#include "print/Labels.h"
#include "print/MemberCard.h"
#include "print/PrintFiles.h"
#include "print/PrintPage.h"

#include <QtTest>

namespace {

Customer customer(const QString& name, const QString& phone, std::optional<qint64> code) {
    Customer c;
    c.id = QStringLiteral("c");
    c.name = name;
    c.phone = phone;
    c.code = code;
    return c;
}

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
    void sampleCardWholePage() {
        QFile file(QStringLiteral(CINEFITA_SOURCE_DIR "/tests/print/pages/Carteirinha-exemplo.html"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(sampleMemberPage(), QString::fromUtf8(file.readAll()));
    }

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
        QTest::newRow("empty") << ""
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
        const QString svg = memberCardSVG(customer(QStringLiteral("Ana"), QString(), 1), shop);
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
        const QString svg = memberCardSVG(customer(QStringLiteral("Ana"), QString(), 1), shop);
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
        const QString svg = memberCardSVG(customer(QStringLiteral("<Zé & Cia>"), QString(), std::nullopt), QString());
        QVERIFY(svg.contains(QStringLiteral("aria-label='Carteirinha de &lt;Zé &amp; Cia&gt;'>")));
        QVERIFY(svg.contains(QStringLiteral("font-size='3.5'>CLI-0000</text>")));
        QString bars = barcodeSVG(QStringLiteral("CLI-0000"));
        bars = bars.mid(bars.indexOf(QStringLiteral("<rect")));
        bars.chop(QStringLiteral("</svg>").size());
        QVERIFY(svg.contains(QStringLiteral("<g transform='translate(20.424999999999997 37.6) scale(0.25)'>") + bars +
                             QStringLiteral("</g>")));
    }

    void cassetteDrawing() {
        const QString svg = memberCardSVG(customer(QStringLiteral("Ana"), QString(), 1), QString());
        const QString open = QStringLiteral("' y='5.5'>");
        const QString close = QStringLiteral("</svg><text x='");
        const qsizetype start = svg.indexOf(open);
        const QString drawing = svg.mid(start, svg.indexOf(close, start) + close.size() - start);
        QCOMPARE(drawing.size(), 5328);
        QVERIFY(drawing.contains(QStringLiteral("<rect x='8.80' y='16.00' width='1.4' height='1.8'/>")));
        QVERIFY(drawing.contains(QStringLiteral("<rect x='43.50' y='21.00' width='1.15' height='1.15'/>")));
    }

    void pageOfCards() {
        const QString page = memberDocument(
            {customer(QStringLiteral("Ana"), QString(), 1), customer(QStringLiteral("Bia"), QString(), 2)},
            QStringLiteral("LOCADORA"));
        const QString cards = QStringLiteral("<main><section class='card'>") +
                              memberCardSVG(customer(QStringLiteral("Ana"), QString(), 1), QStringLiteral("LOCADORA")) +
                              QStringLiteral("</section><section class='card'>") +
                              memberCardSVG(customer(QStringLiteral("Bia"), QString(), 2), QStringLiteral("LOCADORA")) +
                              QStringLiteral("</section></main>");
        QVERIFY(page.contains(cards));
    }
};

QTEST_APPLESS_MAIN(TestMemberCard)
#include "test_membercard.moc"
