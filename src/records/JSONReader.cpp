#include "records/JSONReader.h"

#include "records/StoreJSON.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace {

constexpr int maximumDepth = 256; // deeper nesting is refused rather than recursed into

// The value of a number literal with a fraction or an exponent ("5.0", "1e3"),
// worked out on its decimal digits so nothing passes through a double: true only
// when it is whole and fits in 64 bits exactly.
bool wholeValue(const char* p, const char* stop, qint64& value) {
    const bool negative = *p == '-';
    if (negative)
        ++p;
    std::string digits;
    qint64 scale = 0; // digits × 10^scale is the value
    bool fraction = false;
    for (; p < stop && *p != 'e' && *p != 'E'; ++p) {
        if (*p == '.')
            fraction = true;
        else
            digits += *p, scale -= fraction ? 1 : 0;
    }
    if (p < stop) {
        const bool down = *++p == '-';
        if (*p == '+' || *p == '-')
            ++p;
        qint64 exponent = 0;
        for (; p < stop; ++p) // capped far past any 64-bit value
            exponent = std::min<qint64>(exponent * 10 + (*p - '0'), 1'000'000'000);
        scale += down ? -exponent : exponent;
    }
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    if (digits.empty()) {
        value = 0;
        return true;
    }
    if (scale < 0) {
        // Only zeros may be cut off; the leading digit is never zero here.
        if (-scale >= qint64(digits.size()) ||
            digits.find_first_not_of('0', digits.size() - size_t(-scale)) != std::string::npos)
            return false;
        digits.resize(digits.size() - size_t(-scale));
    } else {
        if (qint64(digits.size()) + scale > 19)
            return false;
        digits.append(size_t(scale), '0');
    }
    if (negative)
        digits.insert(digits.begin(), '-');
    return std::from_chars(digits.data(), digits.data() + digits.size(), value).ec == std::errc();
}

} // namespace

void JSONReader::syntaxError(const char* what) const {
    throw StoreJSONError(QStringLiteral("Dados inválidos: o texto não é JSON válido (%1, posição %2).")
                             .arg(QString::fromUtf8(what))
                             .arg(p_ - begin_));
}

char JSONReader::peek() {
    while (p_ < end_ && (*p_ == ' ' || *p_ == '\n' || *p_ == '\r' || *p_ == '\t'))
        ++p_;
    return p_ < end_ ? *p_ : '\0';
}

void JSONReader::expect(char c) {
    if (peek() != c) {
        const char what[] = {'e', 's', 'p', 'e', 'r', 'a', 'v', 'a', ' ', '"', c, '"', '\0'};
        syntaxError(what);
    }
    ++p_;
}

void JSONReader::enter() {
    if (++depth_ > maximumDepth)
        syntaxError("aninhamento profundo demais");
}

void JSONReader::finish() {
    peek();
    if (p_ != end_) // a NUL byte is text like any other, not an end
        syntaxError("texto depois do documento");
}

bool JSONReader::literal(const char* word) {
    const size_t length = std::strlen(word);
    if (size_t(end_ - p_) < length || std::memcmp(p_, word, length) != 0)
        syntaxError("valor desconhecido");
    p_ += length;
    return true;
}

bool JSONReader::skipNull() {
    return peek() == 'n' && literal("null");
}

bool JSONReader::readBoolean(bool& value) {
    const char c = peek();
    if (c == 't')
        return literal("true") && (value = true, true);
    if (c == 'f')
        return literal("false") && (value = false, true);
    return false;
}

bool JSONReader::scanNumber(const char*& start, const char*& stop) {
    start = p_;
    bool integer = true;
    if (p_ < end_ && *p_ == '-')
        ++p_;
    auto digits = [&] {
        const char* from = p_;
        while (p_ < end_ && *p_ >= '0' && *p_ <= '9')
            ++p_;
        if (p_ == from)
            syntaxError("número inválido");
        return p_ - from;
    };
    const char* first = p_;
    if (digits() > 1 && *first == '0')
        syntaxError("número com zero à esquerda");
    if (p_ < end_ && *p_ == '.') {
        ++p_;
        digits();
        integer = false;
    }
    if (p_ < end_ && (*p_ == 'e' || *p_ == 'E')) {
        ++p_;
        if (p_ < end_ && (*p_ == '+' || *p_ == '-'))
            ++p_;
        digits();
        integer = false;
    }
    stop = p_;
    return integer;
}

bool JSONReader::readInteger(qint64& value) {
    const char c = peek();
    if (c != '-' && (c < '0' || c > '9'))
        return false;
    const char* start = nullptr;
    const char* stop = nullptr;
    if (scanNumber(start, stop))
        return std::from_chars(start, stop, value).ec == std::errc();
    return wholeValue(start, stop, value);
}

bool JSONReader::readNumber(double& value) {
    const char c = peek();
    if (c != '-' && (c < '0' || c > '9'))
        return false;
    const char* start = nullptr;
    const char* stop = nullptr;
    scanNumber(start, stop);
    if (std::from_chars(start, stop, value).ec != std::errc())
        syntaxError("número fora do alcance");
    return true;
}

void JSONReader::skipValue() {
    switch (peek()) {
    case '{':
        readObject([this](std::string_view) { skipValue(); });
        return;
    case '[':
        readArray([this](qsizetype) { skipValue(); });
        return;
    case '"': {
        bool escaped = false;
        const char* rawBegin = nullptr;
        const char* rawEnd = nullptr;
        scanString(scratch_, escaped, rawBegin, rawEnd);
        return;
    }
    case 't':
        literal("true");
        return;
    case 'f':
        literal("false");
        return;
    case 'n':
        literal("null");
        return;
    case '\0':
        syntaxError("fim inesperado do texto");
    default: {
        double ignored = 0;
        if (!readNumber(ignored))
            syntaxError("valor desconhecido");
    }
    }
}
