#include "exchange/FilmBuilder.h"

#include "records/Codes.h"
#include "records/FilmCSVError.h"
#include "records/IntegerText.h"
#include "records/MoneyText.h"
#include "records/Search.h"

#include <algorithm>

namespace {

QString recordMessage(qsizetype record, const char* rest) {
    return QStringLiteral("Registro ") + QString::number(record) + QString::fromUtf8(rest);
}

QString value(std::optional<qsizetype> at, const QStringList& row) {
    return at ? row[*at].trimmed() : QString();
}

} // namespace

FilmBuilder::FilmBuilder(const Store& into, Store* result) : result_(result) {
    // Deleted films keep their codes reserved.
    std::optional<qint64> largest;
    for (const Film& film : into.films) {
        if (film.code) {
            used_.insert(*film.code);
            largest = std::max(largest.value_or(*film.code), *film.code);
        }
    }
    // Any automatic code past 999999 is refused anyway; capping keeps a huge
    // stored code from overflowing the count.
    next_ = std::min<qint64>(largest.value_or(0), 999999) + 1;
}

void FilmBuilder::take(const QStringList& row) {
    ++rows_;
    if (fault_)
        return;
    if (rows_ == 1)
        readHeader(row);
    else
        readRecord(row, rows_); // the header is record 1
}

void FilmBuilder::finish() const {
    if (rows_ < 2)
        throw FilmCSVError::invalid(QStringLiteral("O CSV precisa de cabeçalho e pelo menos um filme."));
    if (fault_)
        throw FilmCSVError::invalid(*fault_);
}

void FilmBuilder::readHeader(const QStringList& header) {
    QStringList keys;
    for (const QString& name : header)
        keys.append(genreKey(name));
    // The leftmost matching column wins, whatever the order of the names.
    const auto index = [&keys](std::initializer_list<const char*> names) -> Column {
        for (qsizetype i = 0; i < keys.size(); ++i)
            for (const char* name : names)
                if (keys[i] == QString::fromUtf8(name))
                    return i;
        return std::nullopt;
    };
    columns_ = header.size();
    title_ = index({"filme", "nome", "titulo"});
    code_ = index({"codigo", "code"});
    copies_ = index({"quant.", "quantidade", "quant", "copies"});
    year_ = index({"ano", "year"});
    price_ = index({"preco (r$)", "preco", "price"});
    genre_ = index({"genero", "genre"});
    category_ = index({"categoria"});
    synopsis_ = index({"sinopse", "sinapse", "synopsis"});
    original_ = index({"titulo original", "original title"});
    if (!title_)
        fault_ = QStringLiteral("O CSV precisa da coluna FILME. Colunas opcionais: CÓDIGO, ANO, GÊNERO, QUANT., "
                                "PREÇO (R$), SINOPSE.");
}

void FilmBuilder::readRecord(const QStringList& record, qsizetype number) {
    if (record.size() != columns_) {
        fault_ = recordMessage(number, ": quantidade de colunas diferente do cabeçalho.");
        return;
    }
    const QString title = record[*title_].trimmed();
    if (title.isEmpty()) {
        fault_ = recordMessage(number, ": informe o nome do filme.");
        return;
    }

    while (used_.contains(next_))
        ++next_;

    const QString codeText = value(code_, record);
    const qint64 code = codeText.isEmpty() ? next_ : numericCode(codeText).value_or(0);

    const QString copiesText = value(copies_, record);
    const qint64 copies = copiesText.isEmpty() ? 1 : wholeInteger(copiesText).value_or(0);

    const QString yearText = value(year_, record);
    const std::optional<qint64> year = yearText.isEmpty() ? std::nullopt : wholeInteger(yearText);

    std::optional<qint64> price = 500;
    QString priceText = value(price_, record);
    if (!priceText.isEmpty()) {
        priceText.remove(QStringLiteral("R$"));
        qsizetype start = 0;
        qsizetype end = priceText.size();
        while (start < end && (priceText[start] == u' ' || priceText[start] == u'\t'))
            ++start;
        while (end > start && (priceText[end - 1] == u' ' || priceText[end - 1] == u'\t'))
            --end;
        price = cents(priceText.mid(start, end - start));
    }

    const bool yearGood = yearText.isEmpty() || (year && *year >= 1888 && *year <= 2100);
    if (code < 1 || code > 999999 || used_.contains(code) || copies < 1 || copies > 100000 || !yearGood || !price) {
        fault_ = recordMessage(number, ": código duplicado ou valor inválido em código, quantidade, ano ou "
                                       "preço. Nenhum filme foi importado.");
        return;
    }

    used_.insert(code);
    next_ = std::max(next_, code + 1);
    if (result_ == nullptr)
        return;

    Film film;
    film.id = newIdentifier();
    film.title = title;
    film.genre = genre(value(genre_, record));
    film.copies = copies;
    film.price = *price;
    film.code = code;
    film.year = year;
    film.sinapse = value(synopsis_, record);
    film.originalTitle = value(original_, record);
    film.release = genreKey(value(category_, record)) == QStringLiteral("lancamento");
    result_->films.append(film);
}

// Most films of a list share a handful of genre cells: each is read once and
// its text kept once.
QString FilmBuilder::genre(const QString& cell) {
    if (const auto found = genres_.constFind(cell); found != genres_.cend())
        return *found;
    const QString text = genreParts(cell).join(QStringLiteral(", "));
    if (genres_.size() < 4096)
        genres_.insert(cell, text);
    return text;
}
