#include "exchange/FilmCSV.h"

#include "records/Codes.h"
#include "records/FilmCSVError.h"
#include "records/IntegerText.h"
#include "records/MoneyText.h"
#include "records/Search.h"

#include <QSet>
#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <limits>
#include <optional>

namespace {

constexpr QChar quote = u'"';

[[noreturn]] void fail(const QString& message) {
    throw FilmCSVError::invalid(message);
}

// Commas win only when they outnumber semicolons on the first line (outside quotes).
QChar chosenDelimiter(const QString& text) {
    bool inQuotes = false;
    qsizetype commas = 0;
    qsizetype semicolons = 0;
    for (const QChar c : text) {
        if (c == quote) {
            inQuotes = !inQuotes;
            continue;
        }
        if (inQuotes)
            continue;
        if (c == u'\n' || c == u'\r')
            break;
        if (c == u',')
            ++commas;
        else if (c == u';')
            ++semicolons;
    }
    return commas > semicolons ? QChar(u',') : QChar(u';');
}

QString recordMessage(qsizetype record, const char* rest) {
    return QStringLiteral("Registro ") + QString::number(record) + QString::fromUtf8(rest);
}

} // namespace

QList<QStringList> parseFilmCSV(const QString& original) {
    QString text = original;
    text.remove(QChar(0xFEFF));
    const QChar delimiter = chosenDelimiter(text);

    QList<QStringList> rows;
    QStringList row;
    QString field;
    bool inQuotes = false;
    bool closedQuote = false;

    const auto finishRow = [&] {
        row.append(field);
        field.clear();
        const bool blank =
            std::all_of(row.cbegin(), row.cend(), [](const QString& f) { return f.trimmed().isEmpty(); });
        if (!blank)
            rows.append(row);
        row.clear();
        closedQuote = false;
    };

    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (inQuotes) {
            if (c == quote) {
                if (i + 1 < text.size() && text[i + 1] == quote) {
                    field.append(quote);
                    ++i;
                } else {
                    inQuotes = false;
                    closedQuote = true;
                }
            } else {
                field.append(c);
            }
        } else if (c == delimiter) {
            row.append(field);
            field.clear();
            closedQuote = false;
        } else if (c == u'\n' || c == u'\r') {
            finishRow();
            if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
                ++i;
        } else if (c == quote) {
            if (!field.isEmpty() || closedQuote)
                fail(QStringLiteral("Aspas inválidas no CSV."));
            inQuotes = true;
        } else if (closedQuote) {
            if (c != u' ' && c != u'\t')
                fail(QStringLiteral("Texto inválido depois das aspas no CSV."));
        } else {
            field.append(c);
        }
    }
    if (inQuotes)
        fail(QStringLiteral("Há aspas sem fechamento no CSV."));
    if (!field.isEmpty() || !row.isEmpty() || closedQuote)
        finishRow();
    return rows;
}

Store importFilmsCSV(const QString& text, const Store& into) {
    const QList<QStringList> rows = parseFilmCSV(text);
    if (rows.size() < 2)
        fail(QStringLiteral("O CSV precisa de cabeçalho e pelo menos um filme."));

    QStringList keys;
    for (const QString& name : rows.first())
        keys.append(genreKey(name));

    // The leftmost matching column wins, whatever the order of the names.
    const auto index = [&keys](std::initializer_list<const char*> names) -> std::optional<qsizetype> {
        for (qsizetype i = 0; i < keys.size(); ++i)
            for (const char* name : names)
                if (keys[i] == QString::fromUtf8(name))
                    return i;
        return std::nullopt;
    };
    const auto value = [&index](std::initializer_list<const char*> names, const QStringList& row) {
        const auto at = index(names);
        return at ? row[*at].trimmed() : QString();
    };

    const auto titleColumn = index({"filme", "nome", "titulo"});
    if (!titleColumn)
        fail(QStringLiteral("O CSV precisa da coluna FILME. Colunas opcionais: CÓDIGO, ANO, GÊNERO, QUANT., PREÇO "
                            "(R$), SINOPSE."));

    // Deleted films keep their codes reserved.
    QSet<qint64> used;
    std::optional<qint64> largest;
    for (const Film& film : into.films) {
        if (film.code) {
            used.insert(*film.code);
            largest = std::max(largest.value_or(*film.code), *film.code);
        }
    }
    // Any automatic code past 999999 is refused anyway; capping keeps a huge stored
    // code from overflowing the count.
    qint64 next = std::min<qint64>(largest.value_or(0), 999999) + 1;

    Store result = into;
    const qsizetype columns = rows.first().size();
    for (qsizetype r = 1; r < rows.size(); ++r) {
        const QStringList& record = rows[r];
        const qsizetype number = r + 1; // the header is record 1
        if (record.size() != columns)
            fail(recordMessage(number, ": quantidade de colunas diferente do cabeçalho."));
        const QString title = record[*titleColumn].trimmed();
        if (title.isEmpty())
            fail(recordMessage(number, ": informe o nome do filme."));

        while (used.contains(next))
            ++next;

        const QString codeText = value({"codigo", "code"}, record);
        const qint64 code = codeText.isEmpty() ? next : numericCode(codeText).value_or(0);

        const QString copiesText = value({"quant.", "quantidade", "quant", "copies"}, record);
        const qint64 copies = copiesText.isEmpty() ? 1 : wholeInteger(copiesText).value_or(0);

        const QString yearText = value({"ano", "year"}, record);
        const std::optional<qint64> year = yearText.isEmpty() ? std::nullopt : wholeInteger(yearText);

        std::optional<qint64> price = 500;
        QString priceText = value({"preco (r$)", "preco", "price"}, record);
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
        if (code < 1 || code > 999999 || used.contains(code) || copies < 1 || copies > 100000 || !yearGood || !price)
            fail(recordMessage(number, ": código duplicado ou valor inválido em código, quantidade, ano ou preço. "
                                       "Nenhum filme foi importado."));

        used.insert(code);
        next = std::max(next, code + 1);

        Film film;
        film.id = newIdentifier();
        film.title = title;
        film.genre = genreParts(value({"genero", "genre"}, record)).join(QStringLiteral(", "));
        film.copies = copies;
        film.price = *price;
        film.code = code;
        film.year = year;
        film.sinapse = value({"sinopse", "sinapse", "synopsis"}, record);
        film.originalTitle = value({"titulo original", "original title"}, record);
        film.release = genreKey(value({"categoria"}, record)) == QStringLiteral("lancamento");
        result.films.append(film);
    }
    return result;
}

namespace {

// 0x80–0x9F of Windows-1252; 0 marks the five bytes the code page leaves undefined.
// The rest of the page is Latin-1.
constexpr std::array<char16_t, 32> windows1252High = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

std::optional<QString> windows1252(const QByteArray& bytes) {
    QString text;
    text.reserve(bytes.size());
    for (const char raw : bytes) {
        const auto byte = static_cast<unsigned char>(raw);
        if (byte >= 0x80 && byte <= 0x9F) {
            const char16_t mapped = windows1252High[byte - 0x80];
            if (mapped == 0)
                return std::nullopt;
            text.append(QChar(mapped));
        } else {
            text.append(QChar(char16_t(byte)));
        }
    }
    return text;
}

} // namespace

QString decodedCSVText(const QByteArray& bytes) {
    QStringDecoder utf8(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (!utf8.hasError())
        return text;
    if (auto fallback = windows1252(bytes))
        return *fallback;
    fail(QStringLiteral("Não foi possível ler o texto do CSV."));
}
