// Any bytes as a stored document: decoding either refuses them with its own
// error or gives a store that encodes and decodes back to itself, in both layouts,
// and that the encoder keeping unchanged runs writes as the plain one does, also
// after the store lost its first rental and got it back at the end.
#include "records/StoreEncoder.h"
#include "records/StoreJSON.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Store store;
    try {
        store = decodeStore(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    } catch (const StoreJSONError&) {
        return 0;
    }
    for (JSONLayout layout : {JSONLayout::compact, JSONLayout::sortedIndented}) {
        const QByteArray json = encodeStore(store, layout);
        if (!(decodeStore(json) == store) || encodeStore(decodeStore(json), layout) != json)
            std::abort();
    }
    StoreEncoder encoder;
    QByteArray kept;
    Store changed = store;
    for (int step = 0; step < 3; ++step) {
        encoder.encode(changed, kept);
        if (kept != encodeStore(changed))
            std::abort();
        if (changed.rentals.isEmpty())
            break;
        changed.rentals.append(changed.rentals.takeFirst());
    }
    return 0;
}
