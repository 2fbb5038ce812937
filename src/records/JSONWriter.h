#pragma once

#include "records/Instant.h"

#include <QByteArray>
#include <QString>
#include <optional>
#include <string>
#include <vector>

// Streams JSON text straight into a byte buffer: compact, or indented by four
// spaces. The caller writes keys in the order it wants them to appear.
class JSONWriter {
public:
    explicit JSONWriter(bool indented) : indented_(indented) {}

    void reserve(qsizetype bytes) { out_.reserve(size_t(bytes)); }

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }

    void key(const char* name);
    void element() { separate(); }

    void member(const char* name, const QString& value) {
        key(name);
        string(value);
    }
    void member(const char* name, qint64 value);
    void member(const char* name, bool value) {
        key(name);
        out_ += value ? "true" : "false";
    }
    // Throws StoreJSONError for a value JSON cannot hold (infinity, not-a-number).
    void member(const char* name, Instant value);
    template <typename T> void member(const char* name, const std::optional<T>& value) {
        if (value)
            member(name, *value);
    }

    QByteArray take() { return QByteArray(out_.data(), qsizetype(out_.size())); }

private:
    void open(char bracket);
    void close(char bracket);
    void separate();
    void newline();
    void string(const QString& value);

    std::string out_;
    bool indented_;
    std::vector<bool> empty_; // per open container: nothing written in it yet
};
