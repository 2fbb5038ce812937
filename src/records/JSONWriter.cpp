#include "records/JSONWriter.h"

#include "records/StoreJSON.h"

#include <charconv>
#include <cmath>

void JSONWriter::open(char bracket) {
    out_ += bracket;
    empty_.push_back(true);
}

void JSONWriter::close(char bracket) {
    const bool wasEmpty = empty_.back();
    empty_.pop_back();
    if (!wasEmpty)
        newline();
    out_ += bracket;
}

void JSONWriter::newline() {
    if (!indented_)
        return;
    out_ += '\n';
    out_.append(empty_.size() * 4, ' ');
}

void JSONWriter::separate() {
    if (!empty_.back())
        out_ += ',';
    empty_.back() = false;
    newline();
}

void JSONWriter::key(const char* name) {
    separate();
    out_ += '"';
    out_ += name; // our own keys never need escaping
    out_ += indented_ ? "\": " : "\":";
}

void JSONWriter::member(const char* name, qint64 value) {
    key(name);
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out_.append(buffer, result.ptr);
}

void JSONWriter::member(const char* name, Instant value) {
    if (!std::isfinite(value.seconds))
        throw StoreJSONError(
            QStringLiteral("Dados inválidos: a data \"%1\" não é um número finito.").arg(QLatin1String(name)));
    key(name);
    char buffer[32];
    // Shortest text that reads back to the very same double.
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value.seconds);
    out_.append(buffer, result.ptr);
}

void JSONWriter::string(const QString& value) {
    static constexpr char hex[] = "0123456789abcdef";
    out_ += '"';
    const char16_t* s = reinterpret_cast<const char16_t*>(value.utf16());
    const qsizetype n = value.size();
    for (qsizetype i = 0; i < n; ++i) {
        // Most text is plain ASCII: copy such runs in one go.
        qsizetype run = i;
        while (run < n && s[run] >= 0x20 && s[run] < 0x80 && s[run] != '"' && s[run] != '\\')
            ++run;
        if (run > i) {
            const size_t at = out_.size();
            out_.resize(at + size_t(run - i));
            for (qsizetype k = i; k < run; ++k)
                out_[at + size_t(k - i)] = char(s[k]);
            i = run - 1;
            continue;
        }
        const char32_t c = s[i];
        if (c < 0x80) {
            if (c == '"' || c == '\\') {
                out_ += '\\';
                out_ += char(c);
            } else if (c >= 0x20) {
                out_ += char(c);
            } else if (c == '\n') {
                out_ += "\\n";
            } else if (c == '\r') {
                out_ += "\\r";
            } else if (c == '\t') {
                out_ += "\\t";
            } else {
                out_ += "\\u00";
                out_ += hex[c >> 4];
                out_ += hex[c & 15];
            }
            continue;
        }
        char32_t code = c;
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < n && s[i + 1] >= 0xDC00 && s[i + 1] <= 0xDFFF) {
            code = 0x10000 + ((c - 0xD800) << 10) + (s[i + 1] - 0xDC00);
            ++i;
        } else if (c >= 0xD800 && c <= 0xDFFF) {
            code = 0xFFFD; // a lone surrogate has no UTF-8 form
        }
        if (code < 0x800) {
            out_ += char(0xC0 | (code >> 6));
        } else if (code < 0x10000) {
            out_ += char(0xE0 | (code >> 12));
            out_ += char(0x80 | ((code >> 6) & 0x3F));
        } else {
            out_ += char(0xF0 | (code >> 18));
            out_ += char(0x80 | ((code >> 12) & 0x3F));
            out_ += char(0x80 | ((code >> 6) & 0x3F));
        }
        out_ += char(0x80 | (code & 0x3F));
    }
    out_ += '"';
}
