#include "records/JSONReader.h"

// The reader's strings, keys and values: their escapes decoded, their UTF-8 checked.

namespace {

void appendUtf8(std::string& out, char32_t code) {
    if (code < 0x80) {
        out += char(code);
    } else if (code < 0x800) {
        out += char(0xC0 | (code >> 6));
        out += char(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += char(0xE0 | (code >> 12));
        out += char(0x80 | ((code >> 6) & 0x3F));
        out += char(0x80 | (code & 0x3F));
    } else {
        out += char(0xF0 | (code >> 18));
        out += char(0x80 | ((code >> 12) & 0x3F));
        out += char(0x80 | ((code >> 6) & 0x3F));
        out += char(0x80 | (code & 0x3F));
    }
}

// The length of the well-formed UTF-8 sequence of two to four bytes at `at`, or 0.
int utf8SequenceLength(const char* at, const char* end) {
    const auto byte = [at](int k) {
        return static_cast<unsigned char>(at[k]);
    };
    const unsigned char lead = byte(0);
    int length = 0;
    unsigned char low = 0x80, high = 0xBF; // the range of the second byte
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        if (lead == 0xE0)
            low = 0xA0;
        else if (lead == 0xED)
            high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        if (lead == 0xF0)
            low = 0x90;
        else if (lead == 0xF4)
            high = 0x8F;
    } else {
        return 0;
    }
    if (end - at < length || byte(1) < low || byte(1) > high)
        return 0;
    for (int k = 2; k < length; ++k)
        if ((byte(k) & 0xC0) != 0x80)
            return 0;
    return length;
}

int hexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

} // namespace

// Reads the string at p_ (which is at its opening quote). Without escapes the
// raw UTF-8 range is handed back as it is; with escapes the decoded bytes are.
void JSONReader::scanString(std::string& decoded, bool& escaped, const char*& rawBegin, const char*& rawEnd) {
    ++p_;
    rawBegin = p_;
    escaped = false;
    for (;;) {
        if (p_ >= end_)
            syntaxError("texto sem aspas de fechamento");
        const auto c = static_cast<unsigned char>(*p_);
        if (c == '"') {
            rawEnd = p_++;
            return;
        }
        if (c < 0x20)
            syntaxError("caractere de controle em texto");
        if (c == '\\') {
            if (!escaped) {
                decoded.assign(rawBegin, p_);
                escaped = true;
            }
            if (++p_ >= end_)
                syntaxError("texto sem aspas de fechamento");
            const char e = *p_++;
            switch (e) {
            case '"':
                decoded += '"';
                break;
            case '\\':
                decoded += '\\';
                break;
            case '/':
                decoded += '/';
                break;
            case 'b':
                decoded += '\b';
                break;
            case 'f':
                decoded += '\f';
                break;
            case 'n':
                decoded += '\n';
                break;
            case 'r':
                decoded += '\r';
                break;
            case 't':
                decoded += '\t';
                break;
            case 'u': {
                auto unit = [&]() -> char32_t {
                    if (end_ - p_ < 4)
                        syntaxError("sequência \\u incompleta");
                    int v = 0;
                    for (int k = 0; k < 4; ++k) {
                        const int h = hexValue(p_[k]);
                        if (h < 0)
                            syntaxError("sequência \\u inválida");
                        v = v * 16 + h;
                    }
                    p_ += 4;
                    return char32_t(v);
                };
                char32_t code = unit();
                if (code >= 0xD800 && code <= 0xDBFF && end_ - p_ >= 6 && p_[0] == '\\' && p_[1] == 'u') {
                    p_ += 2;
                    const char32_t low = unit();
                    if (low < 0xDC00 || low > 0xDFFF)
                        syntaxError("par de surrogates inválido");
                    code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
                } else if (code >= 0xD800 && code <= 0xDFFF) {
                    syntaxError("surrogate isolado");
                }
                appendUtf8(decoded, code);
                break;
            }
            default:
                syntaxError("escape inválido");
            }
            continue;
        }
        if (c < 0x80) {
            if (escaped)
                decoded += char(c);
            ++p_;
            continue;
        }
        // A multi-byte UTF-8 sequence: check it fully (no overlong forms, no encoded
        // surrogates, nothing past U+10FFFF) so damaged text is refused instead of
        // silently becoming replacement characters.
        const int length = utf8SequenceLength(p_, end_);
        if (length == 0)
            syntaxError("texto UTF-8 inválido");
        if (escaped)
            decoded.append(p_, size_t(length));
        p_ += length;
    }
}

std::string_view JSONReader::readKey() {
    bool escaped = false;
    const char* rawBegin = nullptr;
    const char* rawEnd = nullptr;
    scanString(scratch_, escaped, rawBegin, rawEnd);
    return escaped ? std::string_view(scratch_) : std::string_view(rawBegin, size_t(rawEnd - rawBegin));
}

bool JSONReader::readString(QString& value) {
    if (peek() != '"')
        return false;
    bool escaped = false;
    const char* rawBegin = nullptr;
    const char* rawEnd = nullptr;
    scanString(scratch_, escaped, rawBegin, rawEnd);
    value = escaped ? QString::fromStdString(scratch_) : QString::fromUtf8(rawBegin, rawEnd - rawBegin);
    return true;
}
