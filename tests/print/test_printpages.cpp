#include "files/FileWriting.h"
#include "print/Labels.h"
#include "print/MatrixReport.h"
#include "print/MemberCard.h"
#include "print/PrintFiles.h"
#include "records/DateText.h"
#include "support/Builders.h"
#include "support/Files.h"
#include "support/MarkupCheck.h"

#include <QtTest>

namespace {

QString pageWith(const QString& kind, const QString& text) {
    if (kind == u"labels")
        return labelDocument({film(text, 7)}, text);
    if (kind == u"card")
        return memberDocument({customer(text, text)}, text);
    return matrixReportDocument(matrixReportText(text, Instant{}, {{text, QStringLiteral("1")}}));
}

} // namespace

class TestPrintPages : public QObject {
    Q_OBJECT

private slots:
    // Whatever a name or title holds, every page reads back with that text where
    // it stands, and with no tag or attribute of its own.
    void userTextStaysText_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("text");
        for (const char* kind : {"labels", "card", "report"}) {
            QTest::addRow("%s, attribute breakout", kind) << kind << "x' onload='alert(1)";
            QTest::addRow("%s, apostrophe and markup", kind) << kind << "Joana D'Arc <b>&amp; \"Cia\"</b>";
        }
    }
    void userTextStaysText() {
        QFETCH(QString, kind);
        QFETCH(QString, text);
        QCOMPARE(markupDifference(pageWith(kind, text), pageWith(kind, neutralText(text))), QString());
    }

    void barcodeRefusesWhatItCannotEncode() {
        for (const char* value : {"cod-1", "COD 1", "COD-000A"})
            QVERIFY2(barcodeSVG(value).isEmpty(), value);
    }

    void requiredWidth_data() {
        QTest::addColumn<QList<Film>>("films");
        QTest::addColumn<double>("width");
        QTest::newRow("four digits") << QList<Film>{film("T", 7, 1)} << 70.0;
        QTest::newRow("six digits") << QList<Film>{film("T", 7, 1), film("T", 100000, 1)} << 70.75;
        QTest::newRow("many copies") << QList<Film>{film("T", 1234567, 1000)} << 78.75;
    }
    void requiredWidth() {
        QFETCH(QList<Film>, films);
        QFETCH(double, width);
        QCOMPARE(requiredLabelWidth(films), width);
    }

    // One label per copy is the self-test's; a film without a code still gets one.
    void labelOfAFilmWithoutCode() {
        const QString page = labelDocument({film("B")}, "Loja", 72.5, 20.0);
        QVERIFY(page.contains("<title>ETIQUETAS VHS — 72.5 × 20.0 mm</title>"));
        QVERIFY(page.contains("<p class='code'>COD-0000 / EX. 1</p>"));
    }

    void labelSize_data() {
        QTest::addColumn<QString>("width");
        QTest::addColumn<QString>("height");
        QTest::addColumn<QSizeF>("chosen"); // empty: nothing is printed
        const auto row = [](const char* name, const char* width, const char* height, QSizeF chosen = {}) {
            QTest::newRow(name) << QString(width) << QString(height) << chosen;
        };
        row("comma decimal", "72,5", "20", {72.5, 20});
        row("limits", "70", "50", {70, 50});
        row("too narrow", "69", "20");
        row("too low", "72", "17");
        row("too high", "72", "51");
        row("not a number", "setenta", "20");
    }
    void labelSize() {
        QFETCH(QString, width);
        QFETCH(QString, height);
        QFETCH(QSizeF, chosen);
        const auto size = chosenLabelSize(width, height, film("T", 7, 2));
        QCOMPARE(size ? QSizeF(size->width, size->height) : QSizeF(), chosen);
    }

    void proposedWidth() {
        QCOMPARE(proposedLabelWidth(film("T", 100000, 2)), QStringLiteral("71"));
        QVERIFY(!chosenLabelSize(QStringLiteral("70.5"), QStringLiteral("20"), film("T", 100000, 2)));
        QVERIFY(chosenLabelSize(QStringLiteral("70,75"), QStringLiteral("20"), film("T", 100000, 2)));
    }

    // 70 × 18 mm labels sit 2 across and 13 down an A4 sheet; Tubarão has 3 copies.
    void labelSheet_data() {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("copies");
        QTest::addColumn<QString>("chosen"); // position: copies; empty: nothing is printed
        const auto row = [](const char* name, const char* first, const char* copies, const char* chosen = "") {
            QTest::newRow(name) << QString(first) << QString(copies) << QString(chosen);
        };
        row("defaults", "1", "TODOS", "1: 1-3");
        row("left empty", " ", "", "1: 1-3");
        row("one copy", "5", "3", "5: 3-3");
        row("a run", "26", " 2 - 3 ", "26: 2-3");
        row("past the sheet", "27", "TODOS");
        row("position zero", "0", "TODOS");
        row("signed position", "+5", "TODOS");
        row("copy past the film's", "1", "2-4");
        row("no copy zero", "1", "0");
        row("run backwards", "1", "3-2");
        row("open run", "1", "2-");
        row("not a number", "1", "dois");
    }
    void labelSheet() {
        QFETCH(QString, first);
        QFETCH(QString, copies);
        QFETCH(QString, chosen);
        const auto sheet = chosenLabelSheet({"70", "18", first, copies}, film("Tubarão", 7, 3));
        QCOMPARE(sheet
                     ? QStringLiteral("%1: %2-%3").arg(sheet->firstPosition).arg(sheet->firstCopy).arg(sheet->lastCopy)
                     : QString(),
                 chosen);
    }

    void partOfASheet() {
        const LabelSheet sheet{.size = {72.5, 20}, .firstPosition = 3, .firstCopy = 2, .lastCopy = 3};
        const QString page = labelDocument(film("Tubarão", 7, 4), "Loja", sheet);
        QCOMPARE(page.count("<section class='label' style='width:72.5mm;height:20.0mm;visibility:hidden'></section>"),
                 2);
        QCOMPARE(page.count("<section"), 4);
        QVERIFY(page.indexOf("COD-0007 / EX. 2") < page.indexOf("COD-0007 / EX. 3"));
        QVERIFY(!page.contains("EX. 1<") && !page.contains("EX. 4<"));
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
    }

    void printFolderFiles() {
        QTemporaryDir data;
        const QString path = writePrintPage(data.path(), "<p>um</p>", "pagina");
        QCOMPARE(writePrintPage(data.path(), "<p>dois — ü</p>", "pagina"), path);
        QCOMPARE(fileText(path), "<p>dois — ü</p>");
        QCOMPARE(QDir(printFolderPath(data.path())).entryList(QDir::Files), QStringList{QFileInfo(path).fileName()});

        QVERIFY(writeFile(data.filePath("arquivo"), {}));
        QVERIFY_THROWS_EXCEPTION(FileError, writePrintPage(data.filePath("arquivo"), "x", "y"));
    }
};

QTEST_APPLESS_MAIN(TestPrintPages)
#include "test_printpages.moc"
