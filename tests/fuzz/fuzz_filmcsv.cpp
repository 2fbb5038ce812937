// Any bytes as a film CSV file: decoded, read and imported into a small store,
// each step either succeeds or refuses with its message.
#include "exchange/FilmCSV.h"
#include "records/FilmCSVError.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    QString text;
    try {
        text = decodedCSVText(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
        parseFilmCSV(text);
    } catch (const FilmCSVError&) {
        return 0;
    }
    Store store;
    store.films = {Film{"F1", "Existente", "Drama", 1, 500, 7}};
    try {
        const Store imported = importFilmsCSV(text, store);
        if (imported.films.size() < store.films.size() || !(imported.films.first() == store.films.first()))
            std::abort();
    } catch (const FilmCSVError&) {
    }
    return 0;
}
