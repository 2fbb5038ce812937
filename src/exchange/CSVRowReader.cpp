#include "exchange/CSVRowReader.h"

#include "records/FilmCSVError.h"

#include <algorithm>
#include <utility>

namespace {

constexpr QChar quote = u'"';
constexpr QChar byteOrderMark = QChar(0xFEFF);

} // namespace

void CSVRowReader::feed(QStringView piece) {
    for (const QChar c : piece) {
        if (c == byteOrderMark)
            continue; // byte-order marks are dropped wherever they are
        if (delimiter_.isNull())
            scanFirstLine(c);
        else
            take(c);
    }
}

void CSVRowReader::finish() {
    if (delimiter_.isNull())
        chooseDelimiter();
    if (pendingQuote_) {
        pendingQuote_ = false;
        inQuotes_ = false;
        closedQuote_ = true;
    }
    if (inQuotes_)
        throw FilmCSVError::invalid(QStringLiteral("Há aspas sem fechamento no CSV."));
    if (!field_.isEmpty() || !row_.isEmpty() || closedQuote_)
        finishRow();
}

// Commas win only when they outnumber semicolons on the first line (outside
// quotes), so the text is held until that line ends.
void CSVRowReader::scanFirstLine(QChar c) {
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

void CSVRowReader::chooseDelimiter() {
    delimiter_ = commas_ > semicolons_ ? QChar(u',') : QChar(u';');
    const QString head = std::exchange(head_, QString());
    for (const QChar c : head)
        take(c);
}

void CSVRowReader::take(QChar c) {
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
            throw FilmCSVError::invalid(QStringLiteral("Aspas inválidas no CSV."));
        inQuotes_ = true;
    } else if (closedQuote_) {
        if (c != u' ' && c != u'\t')
            throw FilmCSVError::invalid(QStringLiteral("Texto inválido depois das aspas no CSV."));
    } else {
        field_.append(c);
    }
}

// A field is kept as an exact copy (films hold on to their texts, so no spare
// room), and the growing buffer is reused for the next field.
void CSVRowReader::endField() {
    row_.append(QString(field_.constData(), field_.size()));
    field_.resize(0);
}

void CSVRowReader::finishRow() {
    endField();
    const bool blank = std::all_of(row_.cbegin(), row_.cend(), [](const QString& f) { return f.trimmed().isEmpty(); });
    if (!blank)
        onRow_(row_);
    row_.clear();
    closedQuote_ = false;
}
