#include "modes/SelfTestChecks.h"

#include "exchange/FilmCSV.h"
#include "exchange/ScreenExport.h"
#include "records/Ordering.h"
#include "records/Search.h"
#include "records/StoreJSON.h"

namespace selfTest {

void csvImport() {
    const QString sample = QStringLiteral("\uFEFFCÓDIGO;FILME;ANO;GÊNERO;QUANT.;PREÇO (R$);SINOPSE\r\n"
                                          "7;\"Filme; teste\";1994;\"Ação, Aventura\";2;5,50;\"Linha 1\nLinha 2 com "
                                          "\"\"aspas\"\"\"\r\n");
    const Store imported = importFilmsCSV(sample, Store{});
    check(imported.films.size() == 1, "CSV sample imports one film");
    const Film& f = imported.films.first();
    check(f.code == 7 && f.title == QStringLiteral("Filme; teste") && f.year == 1994 &&
              f.genre == QStringLiteral("Ação, Aventura") && f.copies == 2 && f.price == 550,
          "CSV sample fields");
    check(f.sinapse == QStringLiteral("Linha 1\nLinha 2 com \"aspas\""), "CSV quoted multiline field");
    check(refuses([&] { importFilmsCSV(sample, imported); }), "Duplicate CSV code accepted");

    const Store comma = importFilmsCSV(QStringLiteral("FILME,GENERO\nTeste,\"Drama, Romance\""), Store{});
    check(comma.films.size() == 1 && comma.films.first().genre == QStringLiteral("Drama, Romance"),
          "CSV comma delimiter");
    check(parseFilmCSV(QStringLiteral("a,b;c\nx")).first().size() == 2, "CSV delimiter tie");

    check(refuses([] { importFilmsCSV(QStringLiteral("FILME;QUANT.\nBom;1\nRuim;0"), Store{}); }),
          "CSV import is not all-or-nothing");
    const Store priced = importFilmsCSV(QStringLiteral("FILME;PREÇO\nA;R$ 12,90\nB;"), Store{});
    check(priced.films.size() == 2 && priced.films[0].price == 1290 && priced.films[1].price == 500, "CSV prices");
    check(parseFilmCSV(QStringLiteral("\"abc\"  ;x")) ==
              QList<QStringList>{{QStringLiteral("abc"), QStringLiteral("x")}},
          "CSV blanks after closing quote");

    const Store back = importFilmsCSV(csv(filmExportTable(imported.films)), Store{});
    check(back.films.size() == 1 && back.films.first().code == 7 && back.films.first().price == 550,
          "CSV export does not import back");
}

void sinapseAndGenres(const ScratchFolder& scratch) {
    QString sinapse;
    for (int line = 1; line <= 300; ++line)
        sinapse += QStringLiteral("Linha %1: ação, ficção e emoção \"entre aspas\" \\ / \t fim\n").arg(line);
    Store store;
    Film epic = film(QStringLiteral("f1"), QStringLiteral("Épico"), 1);
    epic.sinapse = sinapse;
    epic.genre = QStringLiteral("Ação, ficcao cientifica");
    Film drama = film(QStringLiteral("f2"), QStringLiteral("Drama"), 2);
    store.films = {epic, drama};
    check(decodeStore(encodeStore(store)) == store, "Long sinapse JSON round trip");
    check(throughDatabase(scratch.file(QStringLiteral("test.sqlite")), store) == store,
          "Long sinapse SQLite round trip");

    const auto admitted = [](const Film& f, const QString& selected) {
        for (const QString& part : genreParts(f.genre))
            if (genreKey(part) == genreKey(selected))
                return true;
        return false;
    };
    check(admitted(epic, QStringLiteral("Ficção científica")) && admitted(epic, QStringLiteral("AÇÃO")) &&
              !admitted(drama, QStringLiteral("Ficção científica")),
          "Accent-insensitive genre filter");
    check(genreParts(QStringLiteral("comedia, Comédia, terror")) ==
              QStringList({QStringLiteral("Comédia"), QStringLiteral("Terror")}),
          "Genre spelling");
}

void ordering() {
    const QList<Film> films = {
        film(QStringLiteral("1"), QStringLiteral("Ética"), 4), film(QStringLiteral("2"), QStringLiteral("avatar"), 3),
        film(QStringLiteral("3"), QStringLiteral("Árvore"), 2), film(QStringLiteral("4"), QStringLiteral("Zorro"), 1)};
    check(titles(orderedFilms(films, true)) == QStringList({QStringLiteral("Árvore"), QStringLiteral("avatar"),
                                                            QStringLiteral("Ética"), QStringLiteral("Zorro")}),
          "Portuguese film order");
    check(titles(orderedFilms(films, false)) == QStringList({QStringLiteral("Zorro"), QStringLiteral("Árvore"),
                                                             QStringLiteral("avatar"), QStringLiteral("Ética")}),
          "Film code order");
    const QList<Film> twins = {film(QStringLiteral("1"), QStringLiteral("Alien"), 9),
                               film(QStringLiteral("2"), QStringLiteral("alien"), 2)};
    check(orderedFilms(twins, true).first().code == 2, "Equal titles by code");

    const QList<Customer> customers = {customer(QStringLiteral("1"), QStringLiteral("Úrsula"), 1),
                                       customer(QStringLiteral("2"), QStringLiteral("Carlos"), 3),
                                       customer(QStringLiteral("3"), QStringLiteral("ângela"), 2)};
    const QList<Customer> byName = orderedCustomers(customers, true);
    check(byName[0].name == QStringLiteral("ângela") && byName[1].name == QStringLiteral("Carlos") &&
              byName[2].name == QStringLiteral("Úrsula"),
          "Portuguese customer order");
    const QList<Customer> byCode = orderedCustomers(customers, false);
    check(byCode[0].code == 1 && byCode[1].code == 2 && byCode[2].code == 3, "Customer code order");
}

} // namespace selfTest
