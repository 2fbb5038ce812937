#include "exchange/FilmCSV.h"

#include "files/FileWriting.h"
#include "records/Codes.h"
#include "records/FilmCSVError.h"
#include "records/IntegerText.h"
#include "records/MoneyText.h"
#include "records/Search.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QSet>
#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <optional>
#include <utility>

namespace {

constexpr QChar quote = u'"';
constexpr QChar byteOrderMark = QChar(0xFEFF);

[[noreturn]] void fail(const QString& message) {
    throw FilmCSVError::invalid(message);
}

QString recordMessage(qsizetype record, const char* rest) {
    return QStringLiteral("Registro ") + QString::number(record) + QString::fromUtf8(rest);
}

// The reader as a state machine fed piece by piece, so a file never has to be
// held whole. A piece may end anywhere, even between the two quotes of a doubled
// quote or between CR and LF: those wait for the next character.
class RowReader {
public:
    explicit RowReader(std::function<void(const QStringList&)> onRow) : onRow_(std::move(onRow)) {}

    void feed(QStringView piece) {
        for (const QChar c : piece) {
            if (c == byteOrderMark)
                continue; // byte-order marks are dropped wherever they are
            if (delimiter_.isNull())
                scanFirstLine(c);
            else
                take(c);
        }
    }

    void finish() {
        if (delimiter_.isNull())
            chooseDelimiter();
        if (pendingQuote_) {
            pendingQuote_ = false;
            inQuotes_ = false;
            closedQuote_ = true;
        }
        if (inQuotes_)
            fail(QStringLiteral("Há aspas sem fechamento no CSV."));
        if (!field_.isEmpty() || !row_.isEmpty() || closedQuote_)
            finishRow();
    }

private:
    // Commas win only when they outnumber semicolons on the first line (outside
    // quotes), so the text is held until that line ends.
    void scanFirstLine(QChar c) {
        head_.append(c);
        if (c == quote) {
            headInQuotes_ = !headInQuotes_;
            return;
        }
        if (headInQuotes_)
            return;
        if (c == u'\n' || c == u'\r')
            chooseDelimiter();
        else if (c == u',')
            ++commas_;
        else if (c == u';')
            ++semicolons_;
    }

    void chooseDelimiter() {
        delimiter_ = commas_ > semicolons_ ? QChar(u',') : QChar(u';');
        const QString head = std::exchange(head_, QString());
        for (const QChar c : head)
            take(c);
    }

    void take(QChar c) {
        if (pendingLineFeed_) {
            pendingLineFeed_ = false;
            if (c == u'\n')
                return; // the LF of CR LF
        }
        if (pendingQuote_) {
            pendingQuote_ = false;
            if (c == quote) {
                field_.append(quote);
                return;
            }
            inQuotes_ = false;
            closedQuote_ = true;
        }
        if (inQuotes_) {
            if (c == quote)
                pendingQuote_ = true;
            else
                field_.append(c);
        } else if (c == delimiter_) {
            endField();
            closedQuote_ = false;
        } else if (c == u'\n' || c == u'\r') {
            finishRow();
            pendingLineFeed_ = c == u'\r';
        } else if (c == quote) {
            if (!field_.isEmpty() || closedQuote_)
                fail(QStringLiteral("Aspas inválidas no CSV."));
            inQuotes_ = true;
        } else if (closedQuote_) {
            if (c != u' ' && c != u'\t')
                fail(QStringLiteral("Texto inválido depois das aspas no CSV."));
        } else {
            field_.append(c);
        }
    }

    // A field is kept as an exact copy (films hold on to their texts, so no spare
    // room), and the growing buffer is reused for the next field.
    void endField() {
        row_.append(QString(field_.constData(), field_.size()));
        field_.resize(0);
    }

    void finishRow() {
        endField();
        const bool blank =
            std::all_of(row_.cbegin(), row_.cend(), [](const QString& f) { return f.trimmed().isEmpty(); });
        if (!blank)
            onRow_(row_);
        row_.clear();
        closedQuote_ = false;
    }

    std::function<void(const QStringList&)> onRow_;
    QChar delimiter_;
    QString head_;
    bool headInQuotes_ = false;
    qsizetype commas_ = 0;
    qsizetype semicolons_ = 0;
    QStringList row_;
    QString field_;
    bool inQuotes_ = false;
    bool closedQuote_ = false;
    bool pendingQuote_ = false;
    bool pendingLineFeed_ = false;
};

// The film builder over the reader's rows. It keeps its first fault instead of
// throwing it, because a reader fault anywhere in the text comes first. Without
// a result store it only checks, which costs no memory per record.
class FilmBuilder {
public:
    FilmBuilder(const Store& into, Store* result) : result_(result) {
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

    void take(const QStringList& row) {
        ++rows_;
        if (fault_)
            return;
        if (rows_ == 1)
            readHeader(row);
        else
            readRecord(row, rows_); // the header is record 1
    }

    void finish() const {
        if (rows_ < 2)
            fail(QStringLiteral("O CSV precisa de cabeçalho e pelo menos um filme."));
        if (fault_)
            fail(*fault_);
    }

    qsizetype records() const { return std::max<qsizetype>(rows_ - 1, 0); }

private:
    using Column = std::optional<qsizetype>;

    void readHeader(const QStringList& header) {
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

    static QString value(Column at, const QStringList& row) { return at ? row[*at].trimmed() : QString(); }

    void readRecord(const QStringList& record, qsizetype number) {
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
    QString genre(const QString& cell) {
        if (const auto found = genres_.constFind(cell); found != genres_.cend())
            return *found;
        const QString text = genreParts(cell).join(QStringLiteral(", "));
        if (genres_.size() < 4096)
            genres_.insert(cell, text);
        return text;
    }

    Store* result_;
    QSet<qint64> used_;
    qint64 next_ = 1;
    qsizetype rows_ = 0;
    std::optional<QString> fault_;
    QHash<QString, QString> genres_;
    qsizetype columns_ = 0;
    Column title_, code_, copies_, year_, price_, genre_, category_, synopsis_, original_;
};

// 0x80–0x9F of Windows-1252; 0 marks the five bytes the code page leaves undefined.
// The rest of the page is Latin-1.
constexpr std::array<char16_t, 32> windows1252High = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

std::optional<QString> windows1252(QByteArrayView bytes) {
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

const QString unreadableText = QStringLiteral("Não foi possível ler o texto do CSV.");

// Where a piece of bytes may end without cutting a UTF-8 sequence in two: before
// a lead byte whose sequence the piece does not hold whole.
qsizetype utf8Boundary(const QByteArray& bytes) {
    const qsizetype size = bytes.size();
    for (qsizetype back = 1; back <= std::min<qsizetype>(3, size); ++back) {
        const auto byte = static_cast<unsigned char>(bytes[size - back]);
        if ((byte & 0xC0) == 0x80)
            continue;
        if (byte >= 0xC0) {
            const qsizetype length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
            if (length > back)
                return size - back;
        }
        break;
    }
    return size;
}

constexpr qint64 pieceSize = qint64(1) << 20;

QString readFailure(const QString& path, const QFile& file) {
    return QStringLiteral("Não foi possível ler o arquivo %1: %2")
        .arg(QDir::toNativeSeparators(path), file.errorString());
}

// The file's bytes in order, in pieces of about a mebibyte that never split a
// UTF-8 sequence, each with the count of bytes read so far.
void forEachPiece(const QString& path, const std::function<void(QByteArrayView, qint64)>& use) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError(readFailure(path, file));
    QByteArray buffer;
    qint64 read = 0;
    for (;;) {
        const qsizetype kept = buffer.size();
        buffer.resize(kept + pieceSize);
        const qint64 got = file.read(buffer.data() + kept, pieceSize);
        if (got < 0)
            throw FileError(readFailure(path, file));
        buffer.resize(kept + got);
        read += got;
        if (got == 0) {
            if (!buffer.isEmpty())
                use(buffer, read);
            return;
        }
        const qsizetype cut = utf8Boundary(buffer);
        use(QByteArrayView(buffer.constData(), cut), read);
        buffer.remove(0, cut);
    }
}

} // namespace

QList<QStringList> parseFilmCSV(const QString& text) {
    QList<QStringList> rows;
    RowReader reader([&rows](const QStringList& row) { rows.append(row); });
    reader.feed(text);
    reader.finish();
    return rows;
}

Store importFilmsCSV(const QString& text, const Store& into) {
    Store result = into;
    FilmBuilder builder(into, &result);
    RowReader reader([&builder](const QStringList& row) { builder.take(row); });
    reader.feed(text);
    reader.finish();
    builder.finish();
    return result;
}

QString decodedCSVText(const QByteArray& bytes) {
    QStringDecoder utf8(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (!utf8.hasError())
        return text;
    if (auto fallback = windows1252(bytes))
        return *fallback;
    fail(unreadableText);
}

Store importFilmCSVFile(const QString& path, const Store& into, const Progress& progress) {
    qint64 total = 0;
    qint64 base = 0;
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            throw FileError(readFailure(path, file));
        if (file.size() > largestFilmCSVBytes)
            fail(QStringLiteral("O arquivo tem %1 MB e o limite para importar é de %2 MB. Divida a lista em "
                                "arquivos menores.")
                     .arg((file.size() + 1024 * 1024 - 1) / (1024 * 1024))
                     .arg(largestFilmCSVBytes / (1024 * 1024)));
        total = 3 * file.size();
    }
    const auto report = [&](qint64 read) {
        if (progress)
            progress(std::min(base + read, total), total);
    };

    // First reading: the encoding, decided on the whole file as decodedCSVText does.
    QStringDecoder check(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    bool utf8 = true;
    bool latin = true;
    forEachPiece(path, [&](QByteArrayView piece, qint64 read) {
        if (utf8) {
            const QString decoded = check.decode(piece); // decodes only when made a QString
            utf8 = !check.hasError();
        }
        if (latin)
            latin = std::none_of(piece.begin(), piece.end(), [](char byte) {
                return byte == '\x81' || byte == '\x8D' || byte == '\x8F' || byte == '\x90' || byte == '\x9D';
            });
        report(read);
    });
    if (!utf8 && !latin)
        fail(unreadableText);
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    const auto text = [&](QByteArrayView piece) {
        return utf8 ? QString(decoder.decode(piece)) : windows1252(piece).value_or(QString());
    };

    // Second reading: every record checked, only codes kept (and let go before the
    // films are made).
    base = total / 3;
    qsizetype records = 0;
    {
        FilmBuilder checker(into, nullptr);
        RowReader reader([&checker](const QStringList& row) { checker.take(row); });
        forEachPiece(path, [&](QByteArrayView piece, qint64 read) {
            reader.feed(text(piece));
            report(read);
        });
        reader.finish();
        checker.finish();
        records = checker.records();
    }

    // Third reading: the films, into room made for all of them at once.
    base = 2 * total / 3;
    Store result = into;
    result.films.reserve(into.films.size() + records);
    FilmBuilder builder(into, &result);
    RowReader reader([&builder](const QStringList& row) { builder.take(row); });
    forEachPiece(path, [&](QByteArrayView piece, qint64 read) {
        reader.feed(text(piece));
        report(read);
    });
    reader.finish();
    builder.finish();
    return result;
}
