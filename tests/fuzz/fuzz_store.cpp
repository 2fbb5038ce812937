// Any bytes as a stored document: decoding either refuses them with its own
// error or gives a store that encodes and decodes back to itself, in both layouts.
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
    return 0;
}
