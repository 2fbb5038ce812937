#include "lists/ListCache.h"
#include "lists/ListGenres.h"
#include "lists/ListRows.h"
#include "lists/RecordSaving.h"
#include "lists/Sections.h"
#include "records/DateText.h"
#include "records/MoneyText.h"

#include "support/ListShop.h"

#include <QTest>

namespace {

const Instant now{800000000};
constexpr double day = 86400;
using Rows = QList<QStringList>;
const QString late = "ATENÇÃO: CLIENTE EM DÉBITO";

Rows cells(const QList<ListRow>& rows, qsizetype width = 99) {
    Rows result;
    for (const ListRow& row : rows)
        result.append(row.cells.first(std::min(width, row.cells.size())));
    return result;
}

struct RowsCase {
    ListFilter filter;
    QString search;
    Rows expected;
    qsizetype width = 99; // leading cells compared
};

struct SavingCase {
    int section;
    QString id;      // the record edited; empty for a new one
    FormValues form; // over a valid new record's values
    QString refusal; // "title: text"
};

// Films 3 and 7 (the 7 removed, its copy 3 out with customer 12).
Store savingShop() {
    Store store;
    store.films = {Film{.id = "F3", .title = "ALIEN", .copies = 3, .price = 400, .code = 3},
                   Film{.id = "F7", .title = "TUBARÃO", .copies = 3, .price = 550, .code = 7, .deleted = true}};
    store.customers = {Customer{.id = "C12", .name = "ANA", .code = 12}};
    store.rentals = {Rental{.id = "R1", .film = "F7", .customer = "C12", .due = Instant{900000000}, .copy = 3}};
    return store;
}

} // namespace

class TestListRules : public QObject {
    Q_OBJECT

private slots:
    void rows_data() {
        QTest::addColumn<RowsCase>("c");
        QTest::newRow("rented, by due time") << RowsCase{{.section = Section::rented},
                                                         "",
                                                         {{"COD-0001", "Tubarão", late},
                                                          {"COD-0002", "Drama Total", "LOCADO"},
                                                          {"COD-0002", "Drama Total", "LOCADO"},
                                                          {"—", "—", "LOCADO"}}};
        QTest::newRow("rented, only late")
            << RowsCase{{.section = Section::rented, .onlyLate = true}, "", {{"COD-0001", "Tubarão", late}}};
        QTest::newRow("search, trimmed") << RowsCase{{.section = Section::rented}, " \tdébito ", {{"COD-0001"}}, 1};
        QTest::newRow("search, missing film") << RowsCase{{.section = Section::rented}, "—", {{"—"}}, 1};
        QTest::newRow("returns, the fine so far") << RowsCase{
            {.section = Section::returns},
            "tubarão",
            {{"COD-0001", "Tubarão", dateTimeText(Instant{}), dateTimeText(now.plusSeconds(-day)), money(300)}}};
        QTest::newRow("customers, alphabetical") << RowsCase{{.section = Section::customers},
                                                             "",
                                                             {{"0003", "Ana", "1 LOCAÇÃO(ÕES)"},
                                                              {"0001", "João da Silva", late},
                                                              {"0002", "Maria", "2 LOCAÇÃO(ÕES)"},
                                                              {"0004", "Zé", "SEM PENDÊNCIAS"}}};
        QTest::newRow("customers, by code") << RowsCase{{.section = Section::customers, .alphabeticalClients = false},
                                                        "",
                                                        {{"0001"}, {"0002"}, {"0003"}, {"0004"}},
                                                        1};
        QTest::newRow("films, by code, removed left out") << RowsCase{
            {.section = Section::films, .alphabeticalFilms = false}, "", {{"COD-0001"}, {"COD-0002"}, {"COD-0004"}}, 1};
        QTest::newRow("films of a genre, any spelling")
            << RowsCase{{.section = Section::films, .genre = "AÇÃO"}, "", {{"COD-0001"}, {"COD-0004"}}, 1};
        QTest::newRow("cash, newest first")
            << RowsCase{{.section = Section::cash},
                        "",
                        {{dateText(now.plusSeconds(-100)), "Fita nova", "SAÍDA", money(-500)},
                         {dateText(now.plusSeconds(-1000)), "Locação", "ENTRADA", money(550)}}};
        QTest::newRow("reports, past the baseline") << RowsCase{{.section = Section::reports},
                                                                "",
                                                                {{"FITAS CADASTRADAS", "3"},
                                                                 {"QUANTIDADE NO ACERVO", "4"},
                                                                 {"CLIENTES CADASTRADOS", "4"},
                                                                 {"FITAS ALUGADAS", "4"},
                                                                 {"FITAS ATRASADAS", "1"},
                                                                 {"FILMES JÁ LOCADOS (TOTAL)", "3"}},
                                                                2};
    }
    void rows() {
        QFETCH(RowsCase, c);
        QCOMPARE(cells(listRows(listShop(now), c.filter, c.search, now), c.width), c.expected);
        ListCache cache;
        QCOMPARE(cache.rows(listShop(now), c.filter, c.search, now).cells.size(), c.expected.size());
    }

    // The cached rows follow every change of the store and the clock past a due time or midnight.
    void cacheFollowsStoreAndClock() {
        ListCache cache;
        Store store = listShop(now);
        const auto lateCount = [&](Instant at) {
            const auto& shown = cache.rows(store, {.section = Section::rented}, "", at).cells;
            return std::count_if(shown.cbegin(), shown.cend(),
                                 [](const QStringList& row) { return row.last() == late; });
        };
        QCOMPARE(lateCount(now), 1);
        QCOMPARE(lateCount(now.plusSeconds(day + 1)), 2);
        store.rentals[1].returned = now;
        QCOMPARE(lateCount(now.plusSeconds(day + 1)), 1);
        const quint64 generation = cache.generation();
        QCOMPARE(lateCount(now.plusSeconds(day + 2)), 1);
        QCOMPARE(cache.generation(), generation); // same rows: nothing computed again

        store.rentals[3].finePerDay = 300;
        const auto fine = [&](Instant at) {
            return cache.rows(store, {.section = Section::returns}, "", at).cells.first().at(4);
        };
        QCOMPARE(fine(now.plusSeconds(day)), money(0));
        QCOMPARE(fine(calendar::startOfDay(calendar::localDate(now.plusSeconds(day)).addDays(1)).plusSeconds(1)),
                 money(300));
    }

    // Standard genres first, then the active films' own; removed films' genres left out.
    void genres() {
        Store store = listShop(now);
        store.films[3].genre = "Ação, Cult, Faroeste Italiano";
        QStringList titles;
        for (const GenreChoice& choice : genreChoices(store))
            titles.append(choice.title);
        QCOMPARE(titles.first(), "TODOS OS GÊNEROS");
        QCOMPARE(titles.count("AÇÃO"), 1);
        QCOMPARE(titles.last(), "FAROESTE ITALIANO");
        store.films[3].deleted = true;
        QVERIFY(!genreChoices(store).contains(GenreChoice{"FAROESTE ITALIANO", "Faroeste Italiano"}));
    }

    void refusals_data() {
        QTest::addColumn<SavingCase>("c");
        const int films = Section::films, customers = Section::customers;
        const QString incomplete = "Cadastro incompleto: Informe um código numérico positivo e o nome.";
        const QString invalid = "Dados inválidos: Código já usado, quantidade inválida ou preço inválido.";
        QTest::newRow("code 0") << SavingCase{films, "", {{"code", "0"}}, incomplete};
        QTest::newRow("no name") << SavingCase{customers, "", {{"name", ""}}, incomplete};
        QTest::newRow("code of a removed film") << SavingCase{films, "", {{"code", "COD-0007"}}, invalid};
        QTest::newRow("copies 2,5") << SavingCase{films, "", {{"copies", "2,5"}}, invalid};
        QTest::newRow("price") << SavingCase{films, "", {{"price", "1.001"}}, invalid};
        QTest::newRow("year") << SavingCase{
            films, "", {{"year", "2101"}}, "Ano inválido: Informe um ano de 1888 a 2100, ou deixe vazio."};
        QTest::newRow("category") << SavingCase{
            films, "", {{"release", "estreia"}}, "Categoria inválida: Use ACERVO ou LANÇAMENTO."};
        QTest::newRow("copy 3 out") << SavingCase{
            films,
            "F7",
            {{"code", "7"}, {"copies", "2"}},
            "Quantidade insuficiente: Há mais exemplares locados que a quantidade informada."};
        QTest::newRow("customer code") << SavingCase{
            customers, "", {{"code", "0012"}}, "Código já usado: Escolha outro código de cliente."};
        QTest::newRow("state") << SavingCase{
            customers, "", {{"state", "São"}}, "Estado inválido: Use a sigla de duas letras do estado."};
        QTest::newRow("state, three letters with an accent typed apart") << SavingCase{
            customers, "", {{"state", "SA\u0303O"}}, "Estado inválido: Use a sigla de duas letras do estado."};
        QTest::newRow("CEP") << SavingCase{
            customers, "", {{"zip", "1234"}}, "CEP inválido: Informe os oito números do CEP, ou deixe vazio."};
    }
    void refusals() {
        QFETCH(SavingCase, c);
        FormValues values{{"name", "X"}, {"code", "20"}, {"copies", "1"}, {"price", "1,00"}, {"release", "ACERVO"}};
        values.insert(c.form);
        const std::optional<QString> id = c.id.isEmpty() ? std::nullopt : std::optional(c.id);
        try {
            (c.section == Section::films ? savingFilm : savingCustomer)(savingShop(), values, id);
            QFAIL("saved a record the form should refuse");
        } catch (const FilmCSVError& refusal) {
            QCOMPARE(refusal.title() + ": " + refusal.description(), c.refusal);
        }
    }

    void savedTextsAreNormalised() {
        const Store films = savingFilm(savingShop(),
                                       {{"name", "TUBARÃO 2"},
                                        {"code", "8"},
                                        {"copies", "1"},
                                        {"price", "1,00"},
                                        {"genre", "acao, Drama,  ACAO ,Cult"},
                                        {"release", " Lancamento "}},
                                       std::nullopt);
        QCOMPARE(films.films.last().genre, "Ação, Drama, Cult");
        QVERIFY(films.films.last().release.value_or(false));
        const Store customers = savingCustomer(
            savingShop(), {{"name", "MARIA"}, {"code", "13"}, {"state", "sp"}, {"zip", "01310-100"}}, std::nullopt);
        const Customer saved = customers.customers.last();
        QCOMPARE(QStringList({saved.name, *saved.state, *saved.zip}), QStringList({"MARIA", "SP", "01310100"}));
        // Two letters as seen, the accent typed apart: the same count as the shop's name.
        QCOMPARE(savingCustomer(savingShop(), {{"name", "B"}, {"code", "14"}, {"state", "pa\u0303"}}, std::nullopt)
                     .customers.last()
                     .state.value_or(QString()),
                 QString("PA\u0303"));
        // Edited in place under its own code.
        const Store edited = savingCustomer(savingShop(), {{"name", "ANA B"}, {"code", "12"}}, "C12");
        QCOMPARE(edited.customers.size(), 1);
        QCOMPARE(edited.customers.first().name, "ANA B");
    }
};

QTEST_APPLESS_MAIN(TestListRules)
#include "test_listrules.moc"
