#include "exchange/FilmCSV.h"
#include "records/FilmCSVError.h"

#include <QtTest>

using Rows = QList<QStringList>;

namespace {

const QString firstSample = QStringLiteral("\uFEFFCÓDIGO;FILME;ANO;GÊNERO;QUANT.;PREÇO (R$);SINOPSE\r\n"
                                           "7;\"Filme; teste\";1994;\"Ação, Aventura\";2;5,50;\"Linha 1\nLinha 2 com "
                                           "\"\"aspas\"\"\"\r\n");

const QString duplicateOrInvalid = QStringLiteral(
    ": código duplicado ou valor inválido em código, quantidade, ano ou preço. Nenhum filme foi importado.");

QString failureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const FilmCSVError& error) {
        return error.description();
    }
    return QStringLiteral("(no failure)");
}

Film film(qint64 code, bool deleted = false) {
    Film f;
    f.id = QString::number(code);
    f.title = QStringLiteral("Existente");
    f.copies = 1;
    f.code = code;
    if (deleted)
        f.deleted = true;
    return f;
}

} // namespace

class TestFilmCSV : public QObject {
    Q_OBJECT

private slots:
    void readsRows_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Rows>("rows");
        QTest::newRow("byte-order marks anywhere")
            << QStringLiteral("\uFEFFa;b\n1;\uFEFF2") << Rows{{"a", "b"}, {"1", "2"}};
        QTest::newRow("commas outnumber")
            << QStringLiteral("a,b,c;d\n1,2;3,4") << Rows{{"a", "b", "c;d"}, {"1", "2;3", "4"}};
        QTest::newRow("tie chooses semicolon") << QStringLiteral("a,b;c\n1,2;3") << Rows{{"a,b", "c"}, {"1,2", "3"}};
        QTest::newRow("no delimiter on first line") << QStringLiteral("a\n1,2") << Rows{{"a"}, {"1,2"}};
        QTest::newRow("quoted commas are not counted")
            << QStringLiteral("\"a,b,c\";d\n1;2") << Rows{{"a,b,c", "d"}, {"1", "2"}};
        QTest::newRow("tab is never a delimiter") << QStringLiteral("a\tb\n1") << Rows{{"a\tb"}, {"1"}};
        QTest::newRow("quoted line breaks kept as written")
            << QStringLiteral("a;\"x\r\ny\rz\"\r\n1;2") << Rows{{"a", "x\r\ny\rz"}, {"1", "2"}};
        QTest::newRow("doubled quotes") << QStringLiteral("\"say \"\"hi\"\"\";\"\"\"\"") << Rows{{"say \"hi\"", "\""}};
        QTest::newRow("blanks after closing quote") << QStringLiteral("\"abc\"  ;x") << Rows{{"abc", "x"}};
        QTest::newRow("CR, LF and CR LF line ends")
            << QStringLiteral("a\rb\nc\r\nd") << Rows{{"a"}, {"b"}, {"c"}, {"d"}};
        QTest::newRow("blank and delimiter-only lines dropped")
            << QStringLiteral("a;b\n\n ; \t\r\n\r\n1;2\n") << Rows{{"a", "b"}, {"1", "2"}};
        QTest::newRow("fields are not trimmed") << QStringLiteral(" a ; b ") << Rows{{" a ", " b "}};
        QTest::newRow("trailing delimiter adds a field")
            << QStringLiteral("A;B;\n1;2;") << Rows{{"A", "B", ""}, {"1", "2", ""}};
        QTest::newRow("empty quoted field ends the text") << QStringLiteral("x;\"\"") << Rows{{"x", ""}};
        QTest::newRow("lone empty quoted field is blank") << QStringLiteral("\"\"") << Rows{};
        QTest::newRow("empty text") << QString() << Rows{};
    }
    void readsRows() {
        QFETCH(QString, text);
        QFETCH(Rows, rows);
        QCOMPARE(parseFilmCSV(text), rows);
    }

    void refusesBadQuotes_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        const QString quotes = QStringLiteral("Aspas inválidas no CSV.");
        QTest::newRow("quote inside unquoted field") << QStringLiteral("ab\"c") << quotes;
        QTest::newRow("blank before opening quote") << QStringLiteral(" \"abc\"") << quotes;
        QTest::newRow("quote after closed field") << QStringLiteral("\"abc\" \"") << quotes;
        QTest::newRow("text after closing quote")
            << QStringLiteral("\"abc\"x") << QStringLiteral("Texto inválido depois das aspas no CSV.");
        QTest::newRow("unclosed at end") << QStringLiteral("a;b\n1;\"open\nstill")
                                         << QStringLiteral("Há aspas sem fechamento no CSV.");
    }
    void refusesBadQuotes() {
        QFETCH(QString, text);
        QFETCH(QString, message);
        QCOMPARE(failureOf([&] { parseFilmCSV(text); }), message);
    }

    void importsFirstSample() {
        const Store store = importFilmsCSV(firstSample, Store{});
        QCOMPARE(store.films.size(), 1);
        const Film& f = store.films.first();
        QCOMPARE(f.code, 7);
        QCOMPARE(f.title, QStringLiteral("Filme; teste"));
        QCOMPARE(f.year, 1994);
        QCOMPARE(f.genre, QStringLiteral("Ação, Aventura"));
        QCOMPARE(f.copies, 2);
        QCOMPARE(f.price, 550);
        QCOMPARE(f.sinapse, QStringLiteral("Linha 1\nLinha 2 com \"aspas\""));
        QCOMPARE(f.originalTitle, QString());
        QCOMPARE(f.release, false);
        QVERIFY(!f.deleted);
        QVERIFY(QUuid::fromString(f.id).isNull() == false && f.id == f.id.toUpper() && f.id.size() == 36);

        QCOMPARE(failureOf([&] { importFilmsCSV(firstSample, store); }),
                 QStringLiteral("Registro 2") + duplicateOrInvalid);
    }

    void importsCommaSample() {
        const Store store = importFilmsCSV(QStringLiteral("FILME,GENERO\nTeste,\"Drama, Romance\""), Store{});
        QCOMPARE(store.films.size(), 1);
        QCOMPARE(store.films.first().genre, QStringLiteral("Drama, Romance"));
        QCOMPARE(store.films.first().copies, 1);
        QCOMPARE(store.films.first().price, 500);
        QCOMPARE(store.films.first().year, std::nullopt);
    }

    // One record under a header; the column and cell say what is being read.
    void readsValues_data() {
        QTest::addColumn<QString>("header");
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QVariant>("expected");
        QTest::newRow("copies empty") << "QUANT."
                                      << ""
                                      << "copies" << QVariant(1);
        QTest::newRow("copies upper bound") << "quantidade"
                                            << "100000"
                                            << "copies" << QVariant(100000);
        QTest::newRow("year empty") << "ANO"
                                    << ""
                                    << "year" << QVariant();
        QTest::newRow("year lowest") << "Year"
                                     << "1888"
                                     << "year" << QVariant(1888);
        QTest::newRow("year highest") << "ano"
                                      << "2100"
                                      << "year" << QVariant(2100);
        QTest::newRow("price with symbol") << "PREÇO (R$)"
                                           << "R$ 12,90"
                                           << "price" << QVariant(1290);
        QTest::newRow("price empty") << "preco"
                                     << ""
                                     << "price" << QVariant(500);
        QTest::newRow("code with prefix") << "CÓDIGO"
                                          << "COD-0012"
                                          << "code" << QVariant(12);
        QTest::newRow("code bare") << "code"
                                   << "0007"
                                   << "code" << QVariant(7);
        QTest::newRow("genre folded") << "GÊNERO"
                                      << "\"comedia, Comédia, terror\""
                                      << "genre" << QVariant(QStringLiteral("Comédia, Terror"));
        QTest::newRow("release") << "Categoria"
                                 << "LANÇAMENTO"
                                 << "release" << QVariant(true);
        QTest::newRow("catalogue") << "CATEGORIA"
                                   << "ACERVO"
                                   << "release" << QVariant(false);
        QTest::newRow("original title") << "Título Original"
                                        << " Jaws "
                                        << "originalTitle" << QVariant("Jaws");
        QTest::newRow("synopsis in English") << "synopsis"
                                             << "\" x\n\""
                                             << "sinapse" << QVariant("x");
        QTest::newRow("unknown column ignored") << "DIRETOR"
                                                << "Spielberg"
                                                << "genre" << QVariant(QString());
    }
    void readsValues() {
        QFETCH(QString, header);
        QFETCH(QString, cell);
        QFETCH(QString, field);
        QFETCH(QVariant, expected);
        const Store store = importFilmsCSV(QStringLiteral("FILME;%1\nTubarão;%2").arg(header, cell), Store{});
        QCOMPARE(store.films.size(), 1);
        const Film& f = store.films.first();
        const QVariant actual = field == "copies"          ? QVariant(f.copies)
                                : field == "year"          ? (f.year ? QVariant(*f.year) : QVariant())
                                : field == "price"         ? QVariant(f.price)
                                : field == "code"          ? QVariant(f.code.value_or(-1))
                                : field == "genre"         ? QVariant(f.genre)
                                : field == "release"       ? QVariant(f.release.value_or(false))
                                : field == "originalTitle" ? QVariant(f.originalTitle.value_or("absent"))
                                                           : QVariant(f.sinapse.value_or("absent"));
        QCOMPARE(actual.toString(), expected.toString());
        QCOMPARE(actual.isNull(), expected.isNull());
    }

    void refusesRecords_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        const auto invalid = [](int record) {
            return QStringLiteral("Registro %1").arg(record) + duplicateOrInvalid;
        };
        QTest::newRow("header only") << "FILME;ANO\n\n"
                                     << QStringLiteral("O CSV precisa de cabeçalho e pelo menos um filme.");
        QTest::newRow("no title column")
            << "ANO;GENERO\n1999;Drama"
            << QStringLiteral("O CSV precisa da coluna FILME. Colunas opcionais: CÓDIGO, ANO, GÊNERO, QUANT., PREÇO "
                              "(R$), SINOPSE.");
        QTest::newRow("column count") << "FILME;ANO\nA;1999\nB"
                                      << QStringLiteral("Registro 3: quantidade de colunas diferente do cabeçalho.");
        QTest::newRow("empty title") << "ANO;NOME\n1999;A\n2000; \t"
                                     << QStringLiteral("Registro 3: informe o nome do filme.");
        QTest::newRow("blank lines do not count") << "FILME;QUANT.\n\nBom;1\n;\n\nRuim;0" << invalid(3);
        QTest::newRow("all or nothing") << "FILME;QUANT.\nBom;1\nRuim;0" << invalid(3);
        QTest::newRow("copies above limit") << "FILME;QUANT.\nA;100001" << invalid(2);
        QTest::newRow("copies fraction") << "FILME;QUANT.\nA;\"2,5\"" << invalid(2);
        QTest::newRow("year too early") << "FILME;ANO\nA;1887" << invalid(2);
        QTest::newRow("year too late") << "FILME;ANO\nA;2101" << invalid(2);
        QTest::newRow("year text") << "FILME;ANO\nA;abc" << invalid(2);
        QTest::newRow("price text") << "FILME;PREÇO\nA;cinco" << invalid(2);
        QTest::newRow("price three decimals") << "FILME;PREÇO\nA;1.001" << invalid(2);
        QTest::newRow("code zero") << "FILME;CÓDIGO\nA;0" << invalid(2);
        QTest::newRow("code unreadable") << "FILME;CÓDIGO\nA;X12" << invalid(2);
        QTest::newRow("code above limit") << "FILME;CÓDIGO\nA;1000000" << invalid(2);
        QTest::newRow("code repeated in file") << "FILME;CÓDIGO\nA;5\nB;\nC;5" << invalid(4);
        QTest::newRow("quote fault passes through") << "FILME\nA\"b" << QStringLiteral("Aspas inválidas no CSV.");
    }
    void refusesRecords() {
        QFETCH(QString, text);
        QFETCH(QString, message);
        QCOMPARE(failureOf([&] { importFilmsCSV(text, Store{}); }), message);
    }

    // The store holds codes 1, 2 and 3; 3 belongs to a deleted film and stays reserved.
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
        store.films = {film(1), film(2), film(3, true)};
        store.locadoraName = QStringLiteral("Loja");
        QString text = QStringLiteral("FILME;CODIGO");
        for (const QString& code : codes.split(u';'))
            text += QStringLiteral("\nF;") + code;
        const Store result = importFilmsCSV(text, store);
        QList<qint64> codesGiven;
        for (const Film& f : result.films.mid(3))
            codesGiven.append(f.code.value_or(-1));
        QCOMPARE(codesGiven, assigned);
        QCOMPARE(result.films.mid(0, 3), store.films);
        QCOMPARE(result.locadoraName, store.locadoraName);
    }

    void reservedCodeOfDeletedFilm() {
        Store store;
        store.films = {film(3, true)};
        QCOMPARE(failureOf([&] { importFilmsCSV(QStringLiteral("FILME;CODIGO\nA;3"), store); }),
                 QStringLiteral("Registro 2") + duplicateOrInvalid);
    }

    void decodesBytes_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("UTF-8") << QByteArray("A\xC3\xA7\xC3\xA3o;\xE2\x82\xAC") << QStringLiteral("Ação;€");
        QTest::newRow("Latin letters in 1252") << QByteArray("A\xE7\xE3o;\xC9") << QStringLiteral("Ação;É");
        QTest::newRow("1252 punctuation") << QByteArray("\x80\x93x\x94\x9F") << QStringLiteral("€“x”Ÿ");
        QTest::newRow("cut UTF-8 sequence") << QByteArray("abc\xC3") << QStringLiteral("abcÃ");
    }
    void decodesBytes() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QCOMPARE(decodedCSVText(bytes), text);
    }

    void refusesUndefinedBytes_data() {
        QTest::addColumn<char>("byte");
        for (const char byte : {'\x81', '\x8D', '\x8F', '\x90', '\x9D'})
            QTest::addRow("0x%02X", static_cast<unsigned char>(byte)) << byte;
    }
    void refusesUndefinedBytes() {
        QFETCH(char, byte);
        const QByteArray bytes = QByteArray("FILME\nA\xE7") + byte;
        QCOMPARE(failureOf([&] { decodedCSVText(bytes); }), QStringLiteral("Não foi possível ler o texto do CSV."));
    }
};

QTEST_APPLESS_MAIN(TestFilmCSV)
#include "test_filmcsv.moc"
