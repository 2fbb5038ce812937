#pragma once

#include <QByteArrayView>
#include <QString>
#include <string>
#include <string_view>

// A strict pull reader over UTF-8 JSON text. Syntax errors throw StoreJSONError
// naming the byte offset; the typed reads return false, without consuming, when
// the next value has another type, so the caller can name the key at fault.
class JSONReader {
public:
    explicit JSONReader(QByteArrayView json) : begin_(json.constData()), p_(begin_), end_(begin_ + json.size()) {}

    bool atObject() { return peek() == '{'; }
    bool skipNull();
    bool readString(QString& value);
    bool readInteger(qint64& value); // integers, and numbers with a whole value that fits
    bool readNumber(double& value);
    bool readBoolean(bool& value);
    void skipValue();
    void checkValue() { skipValue(); }
    void finish(); // nothing but whitespace may follow the document

    // Calls onMember(key) with the reader at each member's value; the callback
    // must consume that value.
    template <typename OnMember> void readObject(OnMember onMember) {
        expect('{');
        enter();
        if (peek() == '}') {
            ++p_;
            leave();
            return;
        }
        for (;;) {
            if (peek() != '"')
                syntaxError("esperava uma chave");
            const std::string_view key = readKey();
            expect(':');
            onMember(key);
            if (peek() == ',') {
                ++p_;
                continue;
            }
            expect('}');
            break;
        }
        leave();
    }

    // Calls onElement(index) with the reader at each element; false when the
    // next value is not an array (nothing consumed).
    template <typename OnElement> bool readArray(OnElement onElement) {
        if (peek() != '[')
            return false;
        ++p_;
        enter();
        if (peek() == ']') {
            ++p_;
            leave();
            return true;
        }
        for (qsizetype index = 0;; ++index) {
            onElement(index);
            if (peek() == ',') {
                ++p_;
                continue;
            }
            expect(']');
            break;
        }
        leave();
        return true;
    }

private:
    char peek(); // skips whitespace; '\0' at the end
    void expect(char c);
    void enter();
    void leave() { --depth_; }
    [[noreturn]] void syntaxError(const char* what) const;

    // In JSONReaderStrings.cpp, with readString.
    std::string_view readKey();
    void scanString(std::string& decoded, bool& escaped, const char*& rawBegin, const char*& rawEnd);

    bool scanNumber(const char*& start, const char*& stop); // true for an integer literal
    bool literal(const char* word);

    const char* begin_;
    const char* p_;
    const char* end_;
    int depth_ = 0;
    std::string scratch_;
};
