#include "exchange/FilmCSV.h"
#include "exchange/ScreenExport.h"
#include "files/FileWriting.h"
#include "records/FilmCSVError.h"
#include "support/Failures.h"
#include "support/Files.h"

#include <QtTest>

using Rows = QList<QStringList>;

namespace {

// Everything an import gives a film but its random id.
QStringList films(const Store& store) {
    QStringList summary;
    for (const Film& f : store.films)
        summary.append(QStringLiteral("%1|%2|%3|%4|%5")
                           .arg(f.code.value_or(-1))
                           .arg(f.title, f.genre, f.sinapse.value_or("-"), QString::number(f.copies)));
    return summary;
}

QString invalid(int record) {
    return QStringLiteral("Registro %1: código duplicado ou valor inválido em código, quantidade, ano ou preço. Nenhum "
                          "filme foi importado.")
        .arg(record);
}

} // namespace

class TestFilmCSV : public QObject {
    Q_OBJECT

private slots:
    void readsRows_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Rows>("rows");
        QTest::newRow("byte-order marks anywhere") << "\uFEFFa;b\n1;\uFEFF2" << Rows{{"a", "b"}, {"1", "2"}};
        QTest::newRow("commas outnumber") << "a,b,c;d\n1,2;3" << Rows{{"a", "b", "c;d"}, {"1", "2;3"}};
        QTest::newRow("quoted commas not counted") << "\"a,b,c\";d\n1;2" << Rows{{"a,b,c", "d"}, {"1", "2"}};
        QTest::newRow("quoted line breaks kept") << "a;\"x\r\ny\rz\"\r\n1;2" << Rows{{"a", "x\r\ny\rz"}, {"1", "2"}};
        QTest::newRow("doubled quotes") << "\"say \"\"hi\"\"\";\"\"\"\"" << Rows{{"say \"hi\"", "\""}};
        QTest::newRow("CR, LF and CR LF") << "a\rb\nc\r\nd" << Rows{{"a"}, {"b"}, {"c"}, {"d"}};
        QTest::newRow("blank lines dropped") << "a;b\n\n ; \t\r\n\r\n1;2\n" << Rows{{"a", "b"}, {"1", "2"}};
        QTest::newRow("fields not trimmed") << " a ;\tb " << Rows{{" a ", "\tb "}};
        QTest::newRow("trailing delimiter") << "A;B;\n1;2;" << Rows{{"A", "B", ""}, {"1", "2", ""}};
        QTest::newRow("empty quoted field last") << "x;\"\"" << Rows{{"x", ""}};
    }
    void readsRows() {
        QFETCH(QString, text);
        QFETCH(Rows, rows);
        QCOMPARE(parseFilmCSV(text), rows);
    }

    void refuses_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        const auto row = [](const char* name, const char* text, const QString& message) {
            QTest::newRow(name) << QString(text) << message;
        };
        const QString quotes = QStringLiteral("Aspas inválidas no CSV.");
        row("quote inside field", "FILME\nab\"c", quotes);
        row("quote after closed field", "FILME\n\"abc\" \"", quotes);
        row("text after closing quote", "FILME\n\"abc\"x", "Texto inválido depois das aspas no CSV.");
        row("unclosed at end", "FILME\n\"open\nstill", "Há aspas sem fechamento no CSV.");
        row("header only", "FILME;ANO\n\n", "O CSV precisa de cabeçalho e pelo menos um filme.");
        row("no title column", "ANO;TITLE\n1999;A",
            "O CSV precisa da coluna FILME. Colunas opcionais: CÓDIGO, ANO, GÊNERO, QUANT., PREÇO (R$), SINOPSE.");
        row("column count", "FILME;ANO\nA;1999\nB", "Registro 3: quantidade de colunas diferente do cabeçalho.");
        row("empty title", "ANO;Nome\n1999;A\n2000; \t", "Registro 3: informe o nome do filme.");
        row("blank lines do not count", "FILME;QUANT.\n\nBom;1\n;\n\nRuim;0", invalid(3));
        row("copies fraction", "FILME;QUANT.\nA;\"2,5\"", invalid(2));
        row("year too late", "FILME;ANO\nA;2101", invalid(2));
        row("code repeated in file", "FILME;CÓDIGO\nA;5\nB;\nC;5", invalid(4));
    }
    void refuses() {
        QFETCH(QString, text);
        QFETCH(QString, message);
        QCOMPARE(failureOf([&] { importFilmsCSV(text, Store{}); }), message);
    }

    void hugeStoredCodeRefusesAutomaticCodes() {
        Store store;
        store.films.append(Film{"old", "Velho", "", 1, 500, std::numeric_limits<qint64>::max()});
        QCOMPARE(failureOf([&] { importFilmsCSV(QStringLiteral("FILME\nNovo"), store); }), invalid(2));
        QCOMPARE(importFilmsCSV(QStringLiteral("FILME;CÓDIGO\nNovo;7"), store).films.last().code, 7);
    }

    // Each record exercises one column; the summary is code|title|year|genre|copies|price|release|original|synopsis.
    void readsColumns() {
        const QString text =
            QStringLiteral("Título;Code;Year;Genre;Quantidade;Price;Categoria;Original Title;Synopsis;Diretor\n"
                           "A;COD-0012;;;;;;;;x\n"
                           "B;0013;1888;\"comedia, Comédia, terror\";100000;R$ 12,90;Lançamento; Jaws ;\" s \n\";\n"
                           "C;;2100;;1;0;ACERVO;;;");
        QStringList summary;
        for (const Film& f : importFilmsCSV(text, Store{}).films)
            summary.append(QStringLiteral("%1|%2|%3|%4|%5|%6|%7|%8|%9")
                               .arg(f.code.value_or(-1))
                               .arg(f.title, f.year ? QString::number(*f.year) : QStringLiteral("-"), f.genre)
                               .arg(f.copies)
                               .arg(f.price)
                               .arg(f.release.value_or(false))
                               .arg(f.originalTitle.value_or("-"), f.sinapse.value_or("-")));
        QCOMPARE(summary, (QStringList{"12|A|-||1|500|0||", "13|B|1888|Comédia, Terror|100000|1290|1|Jaws|s",
                                       "14|C|2100||1|0|0||"}));
    }

    // The store holds codes 1, 2 and 3; 3 belongs to a deleted film and still counts.
    void assignsCodes_data() {
        QTest::addColumn<QString>("codes");
        QTest::addColumn<QList<qint64>>("assigned");
        QTest::newRow("after an explicit code") << ";10;" << QList<qint64>{4, 10, 11};
        QTest::newRow("lower explicit code keeps the higher next") << ";6;5;" << QList<qint64>{4, 6, 5, 7};
    }
    void assignsCodes() {
        QFETCH(QString, codes);
        QFETCH(QList<qint64>, assigned);
        Store store;
        for (const qint64 code : {1, 2, 3})
            store.films.append(Film{QString::number(code), QStringLiteral("F"), QString(), 1, 500, code});
        store.films.last().deleted = true;
        store.locadoraName = QStringLiteral("Loja");
        QString text = QStringLiteral("FILME;CODIGO");
        for (const QString& code : codes.split(u';'))
            text += QStringLiteral("\nF;") + code;
        const Store result = importFilmsCSV(text, store);
        QList<qint64> given;
        for (const Film& f : result.films.mid(3))
            given.append(f.code.value_or(-1));
        QCOMPARE(given, assigned);
        QCOMPARE(result.films.mid(0, 3), store.films);
        QCOMPARE(result.locadoraName, store.locadoraName);
    }

    void decodesBytes_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("UTF-8") << QByteArray("A\xC3\xA7\xC3\xA3o;\xE2\x82\xAC") << QStringLiteral("Ação;€");
        QTest::newRow("Windows-1252") << QByteArray("A\xE7\xE3o;\x80\x93x\x94\x9F") << QStringLiteral("Ação;€“x”Ÿ");
        QTest::newRow("cut UTF-8 sequence") << QByteArray("abc\xC3") << QStringLiteral("abcÃ");
    }
    void decodesBytes() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QCOMPARE(decodedCSVText(bytes), text);
    }

    void refusesUndefinedBytes() {
        for (const char byte : {'\x81', '\x8D', '\x8F', '\x90', '\x9D'})
            QCOMPARE(failureOf([&] { decodedCSVText(QByteArray("FILME\nA\xE7") + byte); }),
                     QStringLiteral("Não foi possível ler o texto do CSV."));
    }

    // The file is read in pieces of 1 MiB: each row puts the first piece's end
    // inside one thing the reader or the decoder must see whole, and the file must
    // import exactly as its whole text does. "early" goes into the first film.
    void fileInPiecesReadsAsWhole_data() {
        QTest::addColumn<QByteArray>("inside");
        QTest::addColumn<int>("before");
        QTest::addColumn<QByteArray>("early");
        QTest::addColumn<QString>("failure");
        const auto row = [](const char* name, const char* inside, int before, const char* early = "",
                            const QString& failure = QString()) {
            QTest::newRow(name) << QByteArray(inside) << before << QByteArray(early) << failure;
        };
        row("two-byte character", "a\xC3\xA7", 2);
        row("three-byte character, one byte in", "a\xE2\x82\xAC", 2);
        row("three-byte character, two bytes in", "a\xE2\x82\xAC", 3);
        row("doubled quote", "a\"\"b", 2);
        row("CR LF", "a\"\r\nX;;\"b", 2);
        row("Windows-1252 after the cut", "a\xE7\x80", 2);
        row("undefined byte before the cut", "a\xE7\x80", 2, "\xC3\x81", "Não foi possível ler o texto do CSV.");
        row("bad record after the cut", "a\"\r\nX;;\"b\"\r\n;;\"c", 2, "",
            QStringLiteral("Registro %1: informe o nome do filme."));
    }
    void fileInPiecesReadsAsWhole() {
        QFETCH(QByteArray, inside);
        QFETCH(int, before);
        QFETCH(QByteArray, early);
        QFETCH(QString, failure);
        QByteArray bytes = "FILME;GÊNERO;SINOPSE\r\n";
        qsizetype rows = 1;
        for (; bytes.size() < (1 << 20) - 2000; ++rows)
            bytes += "Filme " + early + QByteArray::number(rows) + ";Drama;\"" + QByteArray(900, 's') + "\"\r\n";
        bytes += "Alvo;Drama;\"";
        bytes += QByteArray((1 << 20) - before - bytes.size(), 'p') + inside + "\"\r\nDepois;;\r\n";
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("filmes.csv"));
        QVERIFY(writeFile(path, bytes));

        Store store;
        store.films.append(Film{"old", "Velho", "", 1, 500, 1});
        QList<std::pair<qint64, qint64>> reports;
        const auto record = [&reports](qint64 done, qint64 total) {
            reports.append({done, total});
        };
        Store inPieces;
        if (failure.contains(QStringLiteral("%1")))
            failure = failure.arg(rows + 3); // the header is record 1, then the fillers, "Alvo" and "X"
        QCOMPARE(failureOf([&] { inPieces = importFilmCSVFile(path, store, record); }), failure);
        if (failure.isEmpty()) {
            QCOMPARE(films(inPieces), films(importFilmsCSV(decodedCSVText(bytes), store)));
            QVERIFY(inPieces.films.size() > rows);
            // The watcher sees the work end, never go backwards.
            QCOMPARE(reports.last().first, reports.last().second);
            QVERIFY(std::is_sorted(reports.cbegin(), reports.cend()));
        }
    }

    // The film list written as the export writes it, in pieces with progress, comes
    // back through the file import with every column as it was.
    void exportedFileImportsBack() {
        Store store;
        for (int code = 1; code <= 3000; ++code)
            store.films.append(Film{QString::number(code),
                                    QStringLiteral("Fita nº %1").arg(code),
                                    "Drama",
                                    2,
                                    550,
                                    code,
                                    1990,
                                    {},
                                    QStringLiteral("Linha 1\nLinha \"2\"")});
        // Quotes, delimiters, line breaks and the largest values the columns take.
        store.films[0] = Film{.id = "a",
                              .title = QStringLiteral("\"Tubarão\"; o filme, parte 1"),
                              .genre = QStringLiteral("Ação, Ficção científica"),
                              .copies = 100000,
                              .price = 100000000,
                              .code = 999999,
                              .year = 1975,
                              .sinapse = QStringLiteral("Linha 1\r\nLinha 2 \"com aspas\""),
                              .originalTitle = QStringLiteral("Jaws"),
                              .release = true};
        store.films[1].price = 1;
        qint64 rowsDone = 0;
        qint64 bytesDone = 0;
        const QString text = csv(filmExportTable(store.films), [&rowsDone](qint64 done, qint64) { rowsDone = done; });
        QCOMPARE(rowsDone, qint64(3001));
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("CINEFITA-lista.csv"));
        writeExportFile(path, text, [&bytesDone](qint64 done, qint64) { bytesDone = done; });
        QCOMPARE(bytesDone, QFileInfo(path).size());
        const Store back = importFilmCSVFile(path, Store{});
        QCOMPARE(filmExportTable(back.films), filmExportTable(store.films));
    }

    void unreadableFile() {
        QTemporaryDir folder;
        const QString missing = folder.filePath(QStringLiteral("nada.csv"));
        QVERIFY(failureOf<FileError>([&] {
                    importFilmCSVFile(missing, Store{});
                }).startsWith(QStringLiteral("Não foi possível ler o arquivo")));
    }

    // A file over the limit is refused by its size, before a byte is read (a sparse
    // file of zeros would otherwise fail later, for its missing header).
    void refusesFileOverLimit() {
        QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("enorme.csv")));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(largestFilmCSVBytes + 1));
        file.close();
        QCOMPARE(failureOf<FilmCSVError>([&] { importFilmCSVFile(file.fileName(), Store{}); }),
                 QStringLiteral("O arquivo tem 65 MB e o limite para importar é de 64 MB. Divida a lista em "
                                "arquivos menores."));
    }
};

QTEST_APPLESS_MAIN(TestFilmCSV)
#include "test_filmcsv.moc"
