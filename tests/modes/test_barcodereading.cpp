#include "print/Labels.h"

#include <QtTest>

// A real browser draws the sample pages and a barcode reader reads the picture:
// the bars must be readable as printed, not just well-formed.

namespace {

QStringList decoded(const QString& page, const QString& scratch) {
    const QString picture = scratch + QStringLiteral("/page.png");
    QFile::remove(picture);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), scratch + QStringLiteral("/home"));

    QProcess browser;
    browser.setProcessEnvironment(environment);
    browser.start(QStandardPaths::findExecutable("chromium"),
                  {"--headless", "--no-sandbox", "--disable-gpu", "--no-first-run", "--disable-background-networking",
                   "--disable-component-update", "--disable-sync", "--user-data-dir=" + scratch + "/profile",
                   "--force-device-scale-factor=4", "--window-size=1000,800", "--screenshot=" + picture,
                   QUrl::fromLocalFile(page).toString()});
    if (!browser.waitForFinished(120000) || !QFile::exists(picture))
        return {QStringLiteral("(no picture) ") + QString::fromUtf8(browser.readAllStandardError().right(400))};

    QProcess reader;
    reader.start(QStandardPaths::findExecutable("zbarimg"), {"--quiet", "--raw", picture});
    if (!reader.waitForFinished(60000))
        return {QStringLiteral("(reader did not finish)")};
    QStringList codes = QString::fromUtf8(reader.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    codes.sort();
    return codes;
}

} // namespace

class TestBarcodeReading : public QObject {
    Q_OBJECT

private slots:
    void samplePagesReadBack() {
        if (QStandardPaths::findExecutable(QStringLiteral("chromium")).isEmpty() ||
            QStandardPaths::findExecutable(QStringLiteral("zbarimg")).isEmpty())
            QSKIP("chromium or zbarimg is not installed");
        QTemporaryDir scratch;
        QProcess fixtures;
        fixtures.start(CINEFITA_BINARY, {"--print-fixtures", scratch.path()});
        QVERIFY(fixtures.waitForFinished(60000));
        QCOMPARE(fixtures.exitCode(), 0);

        QCOMPARE(decoded(scratch.filePath("Etiquetas-exemplo.html"), scratch.path()),
                 (QStringList{"COD-0001-001", "COD-0001-002"}));
        QCOMPARE(decoded(scratch.filePath("Carteirinha-exemplo.html"), scratch.path()), QStringList{"CLI-0001"});
    }

    // Labels placed after blank places of a used sheet read back like the others.
    void partOfASheetReadsBack() {
        if (QStandardPaths::findExecutable(QStringLiteral("chromium")).isEmpty() ||
            QStandardPaths::findExecutable(QStringLiteral("zbarimg")).isEmpty())
            QSKIP("chromium or zbarimg is not installed");
        QTemporaryDir scratch;
        const Film film{.id = "f", .title = "TUBARÃO", .copies = 4, .code = 12};
        const auto sheet = chosenLabelSheet({"70", "18", "5", "2-3"}, film);
        QVERIFY(sheet);
        QFile page(scratch.filePath("Etiquetas-VHS.html"));
        QVERIFY(page.open(QIODevice::WriteOnly));
        page.write(labelDocument(film, "CINEFITA VHS", *sheet).toUtf8());
        page.close();
        QCOMPARE(decoded(page.fileName(), scratch.path()), (QStringList{"COD-0012-002", "COD-0012-003"}));
    }
};

QTEST_GUILESS_MAIN(TestBarcodeReading)
#include "test_barcodereading.moc"
