#include "exchange/FileWriting.h"
#include "print/Labels.h"
#include "print/MatrixReport.h"
#include "print/PrintFiles.h"
#include "print/PrintPage.h"
#include "records/DateText.h"

#include <QtTest>

namespace {

QString samplePage(const char* name) {
    QFile file(QStringLiteral(CINEFITA_SOURCE_DIR "/tests/print/pages/") + QString::fromUtf8(name));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

Film film(std::optional<qint64> code, qint64 copies, const QString& title = QStringLiteral("Tubarão")) {
    Film f;
    f.id = QStringLiteral("f");
    f.title = title;
    f.genre = QStringLiteral("Terror");
    f.copies = copies;
    f.price = 500;
    f.code = code;
    return f;
}

QStringList pieces(const QString& text, const QString& open, const QString& close) {
    QStringList found;
    for (qsizetype at = text.indexOf(open); at >= 0; at = text.indexOf(open, at + 1))
        found.append(text.mid(at, text.indexOf(close, at) - at + close.size()));
    return found;
}

} // namespace

class TestPrintPages : public QObject {
    Q_OBJECT

private slots:
    void escapes_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("escaped");
        QTest::newRow("all four") << "a<b & \"c\" > d"
                                  << "a&lt;b &amp; &quot;c&quot; &gt; d";
        QTest::newRow("apostrophe kept") << "Pulp d'Or"
                                         << "Pulp d'Or";
        QTest::newRow("entity escaped once") << "&lt;"
                                             << "&amp;lt;";
    }
    void escapes() {
        QFETCH(QString, text);
        QFETCH(QString, escaped);
        QCOMPARE(escapedHTML(text), escaped);
    }

    void realNumbers_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("whole") << 70.0 << "70.0";
        QTest::newRow("quarter") << 60.75 << "60.75";
        QTest::newRow("computed") << (85.6 - (33.2 + 13.0)) / 2.0 << "19.699999999999996";
        QTest::newRow("large whole") << 100000.0 << "100000.0";
        QTest::newRow("small") << 0.0001 << "0.0001";
    }
    void realNumbers() {
        QFETCH(double, value);
        QFETCH(QString, text);
        QCOMPARE(realNumberText(value), text);
    }

    void barcode() {
        const QString svg = barcodeSVG(QStringLiteral("COD-0007-001"));
        QVERIFY(svg.startsWith(QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 243 30' "
                                              "preserveAspectRatio='none' aria-label='COD-0007-001' "
                                              "style='width:60.75mm;height:7.5mm;display:block;background:white;"
                                              "fill:black'><rect x='10' y='0' width='1' height='30'/><rect x='14' "
                                              "y='0' width='1' height='30'/><rect x='16' y='0' width='3' "
                                              "height='30'/><rect x='20' y='0' width='3' height='30'/><rect x='24' "
                                              "y='0' width='1' height='30'/><rect x='26' ")));
        QVERIFY(svg.endsWith(QStringLiteral("height='30'/></svg>")));
        QCOMPARE(svg.count(QStringLiteral("<rect")), 14 * 5);
    }

    void barcodeRefuses_data() {
        QTest::addColumn<QString>("value");
        QTest::newRow("lower case") << "cod-1";
        QTest::newRow("space") << "COD 1";
        QTest::newRow("other letter") << "COD-000A";
    }
    void barcodeRefuses() {
        QFETCH(QString, value);
        QCOMPARE(barcodeSVG(value), QString());
    }

    void requiredWidth_data() {
        QTest::addColumn<QList<Film>>("films");
        QTest::addColumn<double>("width");
        QTest::newRow("no films") << QList<Film>{} << 70.0;
        QTest::newRow("four digits") << QList<Film>{film(7, 1)} << 70.0;
        QTest::newRow("six digits") << QList<Film>{film(7, 1), film(100000, 1)} << 70.75;
        QTest::newRow("many copies") << QList<Film>{film(1234567, 1000)} << 78.75;
    }
    void requiredWidth() {
        QFETCH(QList<Film>, films);
        QFETCH(double, width);
        QCOMPARE(requiredLabelWidth(films), width);
    }

    void sampleLabelsWholePage() { QCOMPARE(sampleLabelPage(), samplePage("Etiquetas-exemplo.html")); }

    void labels() {
        const QString page = labelDocument({film(7, 2, QStringLiteral("A<B & C")), film(std::nullopt, 1)},
                                           QStringLiteral("Vídeo & Cia"), 72.5, 20.0);
        QVERIFY(page.contains(QStringLiteral("<title>ETIQUETAS VHS — 72.5 × 20.0 mm</title>")));
        const QStringList labels = pieces(page, QStringLiteral("<section"), QStringLiteral("</section>"));
        QCOMPARE(labels.size(), 3);
        QCOMPARE(labels[0], QStringLiteral("<section class='label' style='width:72.5mm;height:20.0mm'><p "
                                           "class='name'>Vídeo &amp; Cia — A&lt;B &amp; C</p>") +
                                barcodeSVG(QStringLiteral("COD-0007-001")) +
                                QStringLiteral("<p class='code'>COD-0007 / EX. 1</p></section>"));
        QVERIFY(labels[1].contains(barcodeSVG(QStringLiteral("COD-0007-002"))));
        QVERIFY(labels[1].endsWith(QStringLiteral("<p class='code'>COD-0007 / EX. 2</p></section>")));
        QVERIFY(labels[2].contains(QStringLiteral("aria-label='COD-0000-001'")));
        QVERIFY(labels[2].endsWith(QStringLiteral("<p class='code'>COD-0000 / EX. 1</p></section>")));
    }

    void labelSize_data() {
        QTest::addColumn<QString>("width");
        QTest::addColumn<QString>("height");
        QTest::addColumn<double>("chosenWidth"); // 0: nothing is printed
        QTest::addColumn<double>("chosenHeight");
        QTest::newRow("comma decimal") << "72,5"
                                       << "20" << 72.5 << 20.0;
        QTest::newRow("limits") << "70"
                                << "50" << 70.0 << 50.0;
        QTest::newRow("too narrow") << "69"
                                    << "20" << 0.0 << 0.0;
        QTest::newRow("too low") << "72"
                                 << "17" << 0.0 << 0.0;
        QTest::newRow("too high") << "72"
                                  << "51" << 0.0 << 0.0;
        QTest::newRow("not a number") << "setenta"
                                      << "20" << 0.0 << 0.0;
    }
    void labelSize() {
        QFETCH(QString, width);
        QFETCH(QString, height);
        QFETCH(double, chosenWidth);
        QFETCH(double, chosenHeight);
        const auto size = chosenLabelSize(width, height, film(7, 2));
        QCOMPARE(size.has_value(), chosenWidth > 0);
        if (size) {
            QCOMPARE(size->width, chosenWidth);
            QCOMPARE(size->height, chosenHeight);
        }
    }

    void proposedWidth() {
        QCOMPARE(proposedLabelWidth(film(7, 2)), QStringLiteral("70"));
        QCOMPARE(proposedLabelWidth(film(100000, 2)), QStringLiteral("71"));
        QVERIFY(!chosenLabelSize(QStringLiteral("70.5"), QStringLiteral("20"), film(100000, 2)));
        QVERIFY(chosenLabelSize(QStringLiteral("70,75"), QStringLiteral("20"), film(100000, 2)));
    }

    void matrixReport() {
        const Instant now = Instant::fromDateTime(QDateTime(QDate(2026, 10, 8), QTime(14, 30)));
        const QString rule(70, QChar(0x2550));
        const QString text = matrixReportText(QStringLiteral("A<B & C"), now,
                                              {{"FITAS CADASTRADAS", "3", "███"}, {"FITAS ATRASADAS", "0", "▒▒"}});
        QCOMPARE(text, QStringLiteral("CINEFITA • A<B & C\nRELATÓRIO MATRICIAL • 08/10/2026 14:30\n") + rule +
                           QStringLiteral("\nFITAS CADASTRADAS   3   ███\nFITAS ATRASADAS   0   ▒▒"));
        QCOMPARE(matrixReportText(QStringLiteral("LOCADORA"), now, {}),
                 QStringLiteral("CINEFITA • LOCADORA\nRELATÓRIO MATRICIAL • 08/10/2026 14:30\n") + rule + u'\n');

        const QString page = matrixReportDocument(text);
        QVERIFY(page.contains(QStringLiteral("<title>RELATÓRIO MATRICIAL</title>")));
        QVERIFY(page.contains(QStringLiteral("<main><pre>CINEFITA • A&lt;B &amp; C\n")));
        QVERIFY(page.contains(QStringLiteral("   ▒▒</pre></main>")));
    }

    void printFolderFiles() {
        QTemporaryDir data;
        Customer customer;
        customer.code = 12;
        QCOMPARE(memberPageName(customer), QStringLiteral("Carteirinha-0012"));
        customer.code.reset();
        QCOMPARE(memberPageName(customer), QStringLiteral("Carteirinha-0000"));

        const QString path =
            writePrintPage(data.path(), QStringLiteral("<p>um</p>"), QString::fromUtf8(labelsPageName));
        QCOMPARE(path, data.filePath(QStringLiteral("Impressos/Etiquetas-VHS.html")));
        writePrintPage(data.path(), QStringLiteral("<p>dois — ü</p>"), QString::fromUtf8(labelsPageName));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(file.readAll()), QStringLiteral("<p>dois — ü</p>"));
        QCOMPARE(QDir(data.filePath(QStringLiteral("Impressos"))).entryList(QDir::Files),
                 QStringList{QStringLiteral("Etiquetas-VHS.html")});

        QFile blocker(data.filePath(QStringLiteral("arquivo")));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        QVERIFY_THROWS_EXCEPTION(FileError,
                                 writePrintPage(blocker.fileName(), QStringLiteral("x"), QStringLiteral("y")));
    }
};

QTEST_APPLESS_MAIN(TestPrintPages)
#include "test_printpages.moc"
