#include "records/JSONWriter.h"

#include "records/StoreJSON.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {

int decimalDigits(uint64_t value) {
    int digits = 1;
    while (value >= 10) {
        value /= 10;
        ++digits;
    }
    return digits;
}

// Text for |value| = thousandths / 1000 when it is exactly what std::to_chars
// would write, or nullptr when the general conversion has to decide.
char* writeThousandths(char* out, double magnitude) {
    // Below 1e12 two numbers a thousandth apart never round to the same double,
    // so a decimal with at most three places that reads back equal is the
    // shortest text; zero is left out for the sake of its sign.
    if (!(magnitude >= 1e-3 && magnitude < 1e12))
        return nullptr;
    const auto thousandths = uint64_t(magnitude * 1000.0 + 0.5);
    if (double(thousandths) / 1000.0 != magnitude)
        return nullptr;
    const uint64_t whole = thousandths / 1000;
    const auto fraction = unsigned(thousandths % 1000);
    const int fractionDigits = fraction == 0 ? 0 : fraction % 100 == 0 ? 1 : fraction % 10 == 0 ? 2 : 3;
    // std::to_chars takes the scientific form when it is strictly shorter. With
    // decimals it never is: it carries the same digits plus a point and an
    // exponent, and below 1 the fixed form ("0.ddd") is as short as any exponent
    // form. A whole number with trailing zeros may be (700000000 is "7e+08").
    if (fraction == 0 && whole % 10 == 0) {
        uint64_t significand = whole;
        while (significand % 10 == 0)
            significand /= 10;
        const int significantDigits = decimalDigits(significand);
        if (significantDigits + (significantDigits > 1 ? 1 : 0) + 4 < decimalDigits(whole)) // d.ddde+dd
            return nullptr;
    }
    out = std::to_chars(out, out + 20, whole).ptr;
    if (fractionDigits > 0) {
        out[0] = '.';
        out[1] = char('0' + fraction / 100);
        out[2] = char('0' + fraction / 10 % 10);
        out[3] = char('0' + fraction % 10);
        out += 1 + fractionDigits;
    }
    return out;
}

} // namespace

char* writeShortestNumber(char* out, double value) {
    char* start = out;
    if (std::signbit(value))
        *out++ = '-';
    if (char* end = writeThousandths(out, std::fabs(value)))
        return end;
    return std::to_chars(start, start + 32, value).ptr;
}

JSONWriter::JSONWriter(QByteArray& buffer, bool indented, qsizetype expectedBytes)
    : buffer_(buffer), indented_(indented) {
    buffer_.resize(std::max({buffer_.capacity(), expectedBytes, qsizetype(64)}));
    pos_ = buffer_.data();
    end_ = pos_ + buffer_.size();
}

void JSONWriter::grow(size_t bytes) {
    const qsizetype used = pos_ - buffer_.data();
    buffer_.resize(std::max(buffer_.size() * 2, used + qsizetype(bytes)));
    pos_ = buffer_.data() + used;
    end_ = buffer_.data() + buffer_.size();
}

void JSONWriter::open(char bracket) {
    ensure(1);
    *pos_++ = bracket;
    ++depth_;
    first_ = true;
}

void JSONWriter::close(char bracket) {
    --depth_;
    if (!first_)
        newline();
    ensure(1);
    *pos_++ = bracket;
    first_ = false;
}

void JSONWriter::newline() {
    if (!indented_)
        return;
    ensure(1 + size_t(depth_) * 4);
    *pos_++ = '\n';
    pos_ = std::fill_n(pos_, depth_ * 4, ' ');
}

void JSONWriter::separate() {
    if (!first_) {
        ensure(1);
        *pos_++ = ',';
    }
    first_ = false;
    newline();
}

void JSONWriter::elements(QByteArrayView text) {
    Q_ASSERT(!indented_);
    if (text.isEmpty())
        return;
    separate();
    ensure(size_t(text.size()));
    std::memcpy(pos_, text.data(), size_t(text.size()));
    pos_ += text.size();
}

void JSONWriter::indentedKey(const char* name, size_t length) {
    separate();
    ensure(length + 4);
    *pos_++ = '"';
    pos_ = std::copy_n(name, length, pos_); // our own keys never need escaping
    pos_ = std::copy_n("\": ", 3, pos_);
}

void JSONWriter::integer(qint64 value) {
    ensure(24);
    pos_ = std::to_chars(pos_, pos_ + 24, value).ptr;
}

void JSONWriter::boolean(bool value) {
    ensure(5);
    pos_ = value ? std::copy_n("true", 4, pos_) : std::copy_n("false", 5, pos_);
}

void JSONWriter::number(double value) {
    ensure(32);
    pos_ = writeShortestNumber(pos_, value);
}

void JSONWriter::checkFinite(Instant value, const char* name, size_t length) {
    if (!std::isfinite(value.seconds))
        throw StoreJSONError(QStringLiteral("Dados inválidos: a data \"%1\" não é um número finito.")
                                 .arg(QLatin1String(name, qsizetype(length))));
}

void JSONWriter::string(const QString& value) {
    static constexpr char hex[] = "0123456789abcdef";
    const qsizetype n = value.size();
    ensure(size_t(n) * 6 + 2); // the longest form of one UTF-16 unit is \u00XX
    char* out = pos_;
    *out++ = '"';
    const auto* s = reinterpret_cast<const char16_t*>(value.utf16());
    qsizetype i = 0;
    while (true) {
        // Most text is plain ASCII: copy it without further thought, eight
        // characters at a time where the processor allows.
#ifdef __SSE2__
        while (i + 8 <= n) {
            const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i));
            // Signed compares: units from 0x8000 up count as below 0x20.
            const __m128i special = _mm_or_si128(_mm_or_si128(_mm_cmplt_epi16(units, _mm_set1_epi16(0x20)),
                                                              _mm_cmpgt_epi16(units, _mm_set1_epi16(0x7F))),
                                                 _mm_or_si128(_mm_cmpeq_epi16(units, _mm_set1_epi16('"')),
                                                              _mm_cmpeq_epi16(units, _mm_set1_epi16('\\'))));
            if (_mm_movemask_epi8(special) != 0)
                break;
            _mm_storel_epi64(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(units, units));
            out += 8;
            i += 8;
        }
#endif
        while (i < n && char16_t(s[i] - 0x20) < 0x60 && s[i] != '"' && s[i] != '\\')
            *out++ = char(s[i++]);
        if (i == n)
            break;
        const char32_t c = s[i++];
        if (c < 0x80) {
            *out++ = '\\';
            if (c == '"' || c == '\\') {
                *out++ = char(c);
            } else if (c == '\n') {
                *out++ = 'n';
            } else if (c == '\r') {
                *out++ = 'r';
            } else if (c == '\t') {
                *out++ = 't';
            } else {
                out = std::copy_n("u00", 3, out);
                *out++ = hex[c >> 4];
                *out++ = hex[c & 15];
            }
            continue;
        }
        char32_t code = c;
        if (c >= 0xD800 && c <= 0xDBFF && i < n && s[i] >= 0xDC00 && s[i] <= 0xDFFF) {
            code = 0x10000 + ((c - 0xD800) << 10) + (s[i] - 0xDC00);
            ++i;
        } else if (c >= 0xD800 && c <= 0xDFFF) {
            code = 0xFFFD; // a lone surrogate has no UTF-8 form
        }
        if (code < 0x800) {
            *out++ = char(0xC0 | (code >> 6));
        } else if (code < 0x10000) {
            *out++ = char(0xE0 | (code >> 12));
            *out++ = char(0x80 | ((code >> 6) & 0x3F));
        } else {
            *out++ = char(0xF0 | (code >> 18));
            *out++ = char(0x80 | ((code >> 12) & 0x3F));
            *out++ = char(0x80 | ((code >> 6) & 0x3F));
        }
        *out++ = char(0x80 | (code & 0x3F));
    }
    *out++ = '"';
    pos_ = out;
}
