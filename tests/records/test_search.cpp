#include "records/Ordering.h"
#include "records/Search.h"

#include <QTest>

namespace {

// "title#code" (no "#": absent code); ids are the positions in the list.
QList<Film> films(const QStringList& specs) {
    QList<Film> list;
    for (const QString& spec : specs) {
        const QStringList parts = spec.split(u'#');
        Film film{.id = QString::number(list.size()), .title = parts[0]};
        if (parts.size() > 1)
            film.code = parts[1].toLongLong();
        list.append(film);
    }
    return list;
}

QStringList ids(const QList<Film>& list) {
    QStringList result;
    for (const Film& film : list)
        result.append(film.id);
    return result;
}

} // namespace

class TestSearch : public QObject {
    Q_OBJECT

private slots:
    void orderedFilms_data() {
        QTest::addColumn<QStringList>("films");
        QTest::addColumn<bool>("alphabetical");
        QTest::addColumn<QStringList>("expected"); // ids

        QTest::newRow("accents and case ignored")
            << QStringList{"Ética", "avatar", "Árvore", "Zorro"} << true << QStringList{"2", "1", "0", "3"};
        QTest::newRow("folded equal falls to code")
            << QStringList{"acao#2", "Aventura#1", "Ação#1", "ACAO#3"} << true << QStringList{"2", "0", "3", "1"};
        QTest::newRow("same title by code") << QStringList{"Matrix#5", "Matrix#3"} << true << QStringList{"1", "0"};
        QTest::newRow("equal by both keys stays")
            << QStringList{"matrix", "Matrix#0", "MATRIX"} << true << QStringList{"0", "1", "2"};
        QTest::newRow("c cedilla with c")
            << QStringList{"Cidade", "Coração", "Corda", "Casa"} << true << QStringList{"3", "0", "1", "2"};
        QTest::newRow("code alone") << QStringList{"A#3", "B", "C#1", "D#-2", "E#0"} << false
                                    << QStringList{"3", "1", "4", "2", "0"};
    }
    void orderedFilms() {
        QFETCH(QStringList, films);
        QFETCH(bool, alphabetical);
        QFETCH(QStringList, expected);
        QCOMPARE(ids(::orderedFilms(::films(films), alphabetical)), expected);
    }

    void orderedCustomers() {
        const QList<Customer> customers = {{.id = "a", .name = "Érica", .code = 2},
                                           {.id = "b", .name = "erica", .code = 1},
                                           {.id = "c", .name = "Bruno", .code = 3}};
        QList<QString> names;
        for (const Customer& customer : ::orderedCustomers(customers, true))
            names.append(customer.id);
        QCOMPARE(names, (QStringList{"c", "b", "a"}));
        names.clear();
        for (const Customer& customer : ::orderedCustomers(customers, false))
            names.append(customer.id);
        QCOMPARE(names, (QStringList{"b", "a", "c"}));
    }

    void matches_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("query");
        QTest::addColumn<bool>("expected");

        QTest::newRow("accented query") << "Ação Total"
                                        << "ação" << true;
        QTest::newRow("plain query") << "Ação Total"
                                     << "ACAO" << true;
        QTest::newRow("inside") << "O Poderoso Chefão"
                                << "chefao" << true;
        QTest::newRow("decomposed text") << "Corac\u0327a\u0303o"
                                         << "coração" << true;
        QTest::newRow("not contiguous") << "Ação Total"
                                        << "acaototal" << false;
        QTest::newRow("absent") << "Ação Total"
                                << "drama" << false;
        QTest::newRow("empty query") << "Ação Total"
                                     << "" << false;
        QTest::newRow("only an accent") << "Ação Total"
                                        << "\u0301" << false;
        QTest::newRow("empty text") << ""
                                    << "a" << false;
    }
    void matches() {
        QFETCH(QString, text);
        QFETCH(QString, query);
        QFETCH(bool, expected);
        QCOMPARE(::matches(text, query), expected);
    }

    void matchingFilms_data() {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QStringList>("expected"); // ids

        // films: "Apollo 12#7", "Tubarão#12", "Doze Homens#3", "Sem código"
        QTest::newRow("empty keeps all") << "" << QStringList{"0", "1", "2", "3"};
        QTest::newRow("blank keeps all") << " \t\n" << QStringList{"0", "1", "2", "3"};
        QTest::newRow("digits: code or title") << "12" << QStringList{"0", "1"};
        QTest::newRow("padded code") << "0007" << QStringList{"0"};
        QTest::newRow("trimmed code") << " 3\n" << QStringList{"2"};
        QTest::newRow("zero is no code") << "0" << QStringList{};
        QTest::newRow("typed code is title search") << "COD-0007" << QStringList{};
        QTest::newRow("accent-blind title") << "TUBARAO" << QStringList{"1"};
        QTest::newRow("too many digits") << "99999999999999999999" << QStringList{};
    }
    void matchingFilms() {
        QFETCH(QString, query);
        QFETCH(QStringList, expected);
        const QList<Film> list = films({"Apollo 12#7", "Tubarão#12", "Doze Homens#3", "Sem código"});
        QCOMPARE(ids(::matchingFilms(list, query)), expected);
    }

    void genreKey() {
        QCOMPARE(::genreKey("  Ficção Científica \n"), "ficcao cientifica");
        QCOMPARE(::genreKey("SUPER-HERÓIS"), "super-herois");
    }

    void genreParts_data() {
        QTest::addColumn<QString>("genre");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("standard spelling and duplicates")
            << "acao, Drama,  ACAO ,Cult" << QStringList{"Ação", "Drama", "Cult"};
        QTest::newRow("same genre twice") << "Comedia,comédia" << QStringList{"Comédia"};
        QTest::newRow("empty") << "" << QStringList{};
        QTest::newRow("empty pieces") << " , ,Terror," << QStringList{"Terror"};
        QTest::newRow("other genre kept as typed") << " cult , CULT" << QStringList{"cult"};
        QTest::newRow("two words") << "ficcao CIENTIFICA" << QStringList{"Ficção científica"};
    }
    void genreParts() {
        QFETCH(QString, genre);
        QFETCH(QStringList, expected);
        QCOMPARE(::genreParts(genre), expected);
    }

    void standardGenres() {
        const QStringList& genres = ::standardGenres();
        QCOMPARE(genres.size(), 19);
        QCOMPARE(genres.first(), "Ação");
        QCOMPARE(genres[4], "Ficção científica");
        QCOMPARE(genres[15], "Super-heróis");
        QCOMPARE(genres.last(), "Espionagem");
        for (const QString& genre : genres)
            QCOMPARE(::genreParts(genre), QStringList{genre});
    }

    void activeRecords() {
        Store store;
        store.films = films({"A", "B", "C"});
        store.films[0].deleted = true;
        store.films[2].deleted = false;
        store.customers = {{.id = "x", .name = "X"}, {.id = "y", .name = "Y", .deleted = true}};
        QCOMPARE(ids(activeFilms(store)), (QStringList{"1", "2"}));
        QCOMPARE(activeCustomers(store).size(), 1);
        QCOMPARE(activeCustomers(store).first().id, "x");
        QCOMPARE(store.films.size(), 3);
    }
};

QTEST_APPLESS_MAIN(TestSearch)
#include "test_search.moc"
