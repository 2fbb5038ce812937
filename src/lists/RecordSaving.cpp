#include "lists/RecordSaving.h"

#include "records/Codes.h"
#include "records/IntegerText.h"
#include "records/MoneyText.h"
#include "records/PhoneText.h"
#include "records/RentalRules.h"
#include "records/Search.h"

#include <QTextBoundaryFinder>
#include <algorithm>

namespace {

constexpr qint64 highestCode = 999999;
constexpr qint64 mostCopies = 100000;

template <typename Record> qint64 nextCode(const QList<Record>& records) {
    qint64 highest = 0;
    for (const Record& record : records)
        highest = std::max(highest, record.code.value_or(0));
    return highest + 1;
}

// Another record than the one being edited already holds the code; removed ones count.
template <typename Record>
bool codeTaken(const QList<Record>& records, qint64 code, const std::optional<QString>& editID) {
    return std::any_of(records.cbegin(), records.cend(),
                       [&](const Record& record) { return record.code == code && (!editID || record.id != *editID); });
}

template <typename Record> void placing(QList<Record>& records, Record record) {
    const auto existing =
        std::find_if(records.begin(), records.end(), [&](const Record& held) { return held.id == record.id; });
    if (existing != records.end())
        *existing = std::move(record);
    else
        records.append(std::move(record));
}

std::optional<qint64> wholeIn(const QString& text, qint64 low, qint64 high) {
    const auto number = wholeInteger(text);
    if (!number || *number < low || *number > high)
        return std::nullopt;
    return number;
}

qint64 validCode(const FormValues& values) {
    const auto code = numericCode(values.value("code"));
    if (!code || *code < 1 || *code > highestCode || values.value("name").isEmpty())
        throw RecordRefusal(QStringLiteral("Cadastro incompleto"),
                            QStringLiteral("Informe um código numérico positivo e o nome."));
    return *code;
}

// A quantity below the highest copy number still out would leave that tape without a number.
qint64 highestCopyOut(const Store& store, const QString& film) {
    qint64 highest = 0;
    for (const Rental& rental : store.rentals)
        if (rental.film == film && !rental.returned)
            highest = std::max(highest, rental.copy.value_or(0));
    return highest;
}

template <typename Record> Store marking(Store store, QList<Record> Store::*records, const QString& id, bool deleted) {
    for (Record& record : store.*records)
        if (record.id == id)
            record.deleted = deleted;
    return store;
}

} // namespace

qsizetype visibleLength(const QString& text) {
    QTextBoundaryFinder graphemes(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (graphemes.toNextBoundary() != -1)
        ++count;
    return count;
}

qint64 nextFilmCode(const Store& store) {
    return nextCode(store.films);
}

qint64 nextCustomerCode(const Store& store) {
    return nextCode(store.customers);
}

Store savingFilm(const Store& store, const FormValues& values, const std::optional<QString>& editID) {
    const qint64 code = validCode(values);
    const auto copies = wholeIn(values.value("copies"), 1, mostCopies);
    const auto price = cents(values.value("price"));
    if (codeTaken(store.films, code, editID) || !copies || !price)
        throw RecordRefusal(QStringLiteral("Dados inválidos"),
                            QStringLiteral("Código já usado, quantidade inválida ou preço inválido."));
    const QString yearText = values.value("year");
    const auto year = wholeIn(yearText, 1888, 2100);
    if (!yearText.isEmpty() && !year)
        throw RecordRefusal(QStringLiteral("Ano inválido"),
                            QStringLiteral("Informe um ano de 1888 a 2100, ou deixe vazio."));
    const QString category = genreKey(values.value("release"));
    if (category != QStringLiteral("acervo") && category != QStringLiteral("lancamento"))
        throw RecordRefusal(QStringLiteral("Categoria inválida"), QStringLiteral("Use ACERVO ou LANÇAMENTO."));

    Film film;
    film.id = editID.value_or(newIdentifier());
    if (*copies < inUse(store, film.id) || *copies < highestCopyOut(store, film.id))
        throw RecordRefusal(QStringLiteral("Quantidade insuficiente"),
                            QStringLiteral("Há mais exemplares locados que a quantidade informada."));
    film.title = values.value("name");
    film.genre = genreParts(values.value("genre")).join(QStringLiteral(", "));
    film.copies = *copies;
    film.price = *price;
    film.code = code;
    film.year = year;
    film.sinapse = values.value("sinapse");
    film.originalTitle = values.value("original");
    film.release = category == QStringLiteral("lancamento");

    Store changed = store;
    placing(changed.films, std::move(film));
    return changed;
}

Store savingCustomer(const Store& store, const FormValues& values, const std::optional<QString>& editID) {
    const qint64 code = validCode(values);
    if (codeTaken(store.customers, code, editID))
        throw RecordRefusal(QStringLiteral("Código já usado"), QStringLiteral("Escolha outro código de cliente."));
    const QString state = values.value("state").toUpper();
    if (!state.isEmpty() && visibleLength(state) != 2)
        throw RecordRefusal(QStringLiteral("Estado inválido"), QStringLiteral("Use a sigla de duas letras do estado."));
    QString zip;
    for (QChar character : values.value("zip"))
        if (character >= u'0' && character <= u'9')
            zip.append(character);
    if (!zip.isEmpty() && zip.size() != 8)
        throw RecordRefusal(QStringLiteral("CEP inválido"),
                            QStringLiteral("Informe os oito números do CEP, ou deixe vazio."));

    Customer customer;
    customer.id = editID.value_or(newIdentifier());
    customer.name = values.value("name");
    customer.phone = formatPhone(values.value("phone"));
    customer.code = code;
    customer.address = values.value("address");
    customer.city = values.value("city");
    customer.state = state;
    customer.zip = zip;

    Store changed = store;
    placing(changed.customers, std::move(customer));
    return changed;
}

Store markingFilmDeleted(Store store, const QString& id, bool deleted) {
    return marking(std::move(store), &Store::films, id, deleted);
}

Store markingCustomerDeleted(Store store, const QString& id, bool deleted) {
    return marking(std::move(store), &Store::customers, id, deleted);
}
