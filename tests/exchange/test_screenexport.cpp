#include "exchange/ScreenExport.h"
#include "support/Builders.h"

#include <QtTest>

using Rows = QList<QStringList>;

class TestScreenExport : public QObject {
    Q_OBJECT

private slots:
    void writesCSV_data() {
        QTest::addColumn<Rows>("rows");
        QTest::addColumn<QString>("text");
        QTest::newRow("quotes, delimiters and line breaks")
            << Rows{{"a", "b\"c"}, {"x;y", "1\n2"}} << QStringLiteral("\uFEFF\"a\";\"b\"\"c\"\r\n\"x;y\";\"1\n2\"");
        QTest::newRow("empty table") << Rows{} << QStringLiteral("\uFEFF");
        QTest::newRow("row without cells") << Rows{{"a"}, {}, {""}} << QStringLiteral("\uFEFF\"a\"\r\n\r\n\"\"");
    }
    void writesCSV() {
        QFETCH(Rows, rows);
        QFETCH(QString, text);
        QCOMPARE(csv(rows), text);
    }

    void filmLayout() {
        Film plain = film(QStringLiteral("Tubarão"), 7);
        plain.price = 550;
        plain.copies = 3;
        Film full = film(QStringLiteral("De volta"), 12345);
        full.year = 1985;
        full.originalTitle = QStringLiteral("Back to the Future");
        full.price = 1290;
        full.sinapse = QStringLiteral("Linha 1\nLinha 2");
        full.release = true;
        Film noCode = film(QStringLiteral("Sem código"));
        noCode.release = false;
        const Rows table = filmExportTable({plain, full, noCode});
        QCOMPARE(table, (Rows{{"CÓDIGO", "FILME", "TÍTULO ORIGINAL", "ANO", "GÊNERO", "QUANT.", "PREÇO (R$)", "SINOPSE",
                               "CATEGORIA"},
                              {"0007", "Tubarão", "", "", "Drama", "3", "5.50", "", "ACERVO"},
                              {"12345", "De volta", "Back to the Future", "1985", "Drama", "1", "12.90",
                               "Linha 1\nLinha 2", "LANÇAMENTO"},
                              {"0000", "Sem código", "", "", "Drama", "1", "5.00", "", "ACERVO"}}));
    }
};

QTEST_APPLESS_MAIN(TestScreenExport)
#include "test_screenexport.moc"
