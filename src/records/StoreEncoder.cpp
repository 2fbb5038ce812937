#include "records/StoreEncoder.h"

#include "records/JSONWriter.h"
#include "records/RecordWriting.h"

#include <algorithm>

template <typename Record, typename Write>
void StoreEncoder::refresh(ListText<Record>& kept, const QList<Record>& records, Write write) {
    const qsizetype count = records.size();
    const qsizetype keptCount = kept.written.size();
    kept.runs.resize((count + runLength - 1) / runLength);
    // An untouched list is still the very array written last time.
    if (count == keptCount && records.constData() == kept.written.constData())
        return;
    for (qsizetype run = 0; run < kept.runs.size(); ++run) {
        const qsizetype begin = run * runLength;
        const qsizetype end = std::min(begin + runLength, count);
        const bool sameRange = end == std::min(begin + runLength, keptCount);
        if (sameRange && std::equal(records.begin() + begin, records.begin() + end, kept.written.begin() + begin))
            continue;
        JSONWriter w(kept.runs[run], false, (end - begin) * 128);
        for (qsizetype i = begin; i < end; ++i) {
            w.element();
            write(w, records[i]);
        }
        w.finish();
    }
    kept.written = records;
}

void StoreEncoder::encode(const Store& store, QByteArray& document) {
    JSONWriter w(document, false, expectedDocumentBytes(store));
    try {
        writeDocument(w, store, [this](JSONWriter& w, const auto& key, const auto& records, auto write) {
            auto& list = kept(records);
            refresh(list, records, write);
            w.key(key);
            w.beginArray();
            for (const QByteArray& run : list.runs)
                w.elements(run);
            w.endArray();
        });
    } catch (...) {
        // A run may be half rewritten while its records are still the old ones.
        *this = StoreEncoder();
        throw;
    }
}
