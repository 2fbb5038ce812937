#include "exchange/FilmCSV.h"
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

    // Whatever the export writes, the import reads back as the same columns.
    void exportedFilmsImportBack() {
        Film a = film(QStringLiteral("\"Tubarão\"; o filme"), 7);
        a.year = 1975;
        a.price = 1;
        a.copies = 100000;
        a.sinapse = QStringLiteral("Linha 1\r\nLinha 2 \"com aspas\"");
        a.release = true;
        Film b = film(QStringLiteral("Ação, Aventura"), 999999);
        b.genre = QStringLiteral("Ação, Ficção científica");
        b.price = 100000000;
        b.originalTitle = QStringLiteral("Action");
        const Rows table = filmExportTable({a, b});
        Store existing;
        existing.films = {film(QStringLiteral("Outro"), 8)};
        const Store back = importFilmsCSV(csv(table), existing);
        QCOMPARE(back.films.size(), 3);
        QCOMPARE(filmExportTable(back.films.mid(1)), table);
    }
};

QTEST_APPLESS_MAIN(TestScreenExport)
#include "test_screenexport.moc"
