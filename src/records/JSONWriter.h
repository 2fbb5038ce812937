#pragma once

#include "records/Instant.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <cstring>
#include <optional>

// Streams JSON text straight into a byte buffer: compact, or indented by four
// spaces. The caller writes keys in the order it wants them to appear.
//
// A member's key is given with its separator, as the literal R"(,"name":)", so
// the compact layout copies it in one go; the comma is dropped for the first
// member of an object. The buffer's memory is reused: a caller that saves the
// same large document again and again keeps it and pays for its pages once.
// Writes the same text as std::to_chars(out, out + 32, value) — the shortest that
// reads back as the same double — with a quick path for numbers of at most three
// decimals, which every stored date is. Needs 32 bytes at out; returns the end.
char* writeShortestNumber(char* out, double value);

class JSONWriter {
public:
    JSONWriter(QByteArray& buffer, bool indented, qsizetype expectedBytes);

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }

    template <size_t N> void key(const char (&separatedKey)[N]) {
        static_assert(N > 5, "keys are written as R\"(,\"name\":)\"");
        if (indented_) {
            indentedKey(separatedKey + 2, N - 5);
            return;
        }
        ensure(N);
        const size_t skip = first_ ? 1 : 0;
        std::memcpy(pos_, separatedKey + skip, N - 1 - skip);
        pos_ += N - 1 - skip;
        first_ = false;
    }
    void element() { separate(); }
    // Array elements already written as compact text, separated by commas (a run
    // of records encoded earlier); nothing for an empty text. Compact layout only.
    void elements(QByteArrayView text);

    template <size_t N> void member(const char (&separatedKey)[N], const QString& value) {
        key(separatedKey);
        string(value);
    }
    template <size_t N> void member(const char (&separatedKey)[N], qint64 value) {
        key(separatedKey);
        integer(value);
    }
    template <size_t N> void member(const char (&separatedKey)[N], bool value) {
        key(separatedKey);
        boolean(value);
    }
    // Throws StoreJSONError for a value JSON cannot hold (infinity, not-a-number).
    template <size_t N> void member(const char (&separatedKey)[N], Instant value) {
        checkFinite(value, separatedKey + 2, N - 5);
        key(separatedKey);
        number(value.seconds);
    }
    template <size_t N, typename T> void member(const char (&separatedKey)[N], const std::optional<T>& value) {
        if (value)
            member(separatedKey, *value);
    }

    // Trims the buffer to the text written; its capacity stays for the next use.
    void finish() { buffer_.resize(pos_ - buffer_.data()); }

private:
    void ensure(size_t bytes) {
        if (size_t(end_ - pos_) < bytes)
            grow(bytes);
    }
    void grow(size_t bytes);
    void open(char bracket);
    void close(char bracket);
    void separate();
    void newline();
    void indentedKey(const char* name, size_t length);
    void string(const QString& value);
    void integer(qint64 value);
    void boolean(bool value);
    void number(double value);
    static void checkFinite(Instant value, const char* name, size_t length);

    QByteArray& buffer_;
    char* pos_;
    char* end_;
    int depth_ = 0;
    bool first_ = true; // nothing written yet in the innermost open container
    bool indented_;
};
