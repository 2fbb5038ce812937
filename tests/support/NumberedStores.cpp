#include "support/NumberedStores.h"

#include "records/StoreJSON.h"
#include "storage/LocalDatabase.h"
#include "support/RawDatabase.h"

#include <QFile>

Store numberedStore(int number, int rentals) {
    Store store;
    store.locadoraName = QStringLiteral("Loja %1").arg(number);
    store.reportRentalBaseline = number;
    for (int i = 0; i < rentals; ++i) {
        store.rentals.append(Rental{QStringLiteral("R-%1-%2").arg(number).arg(i), "F-1", "C-1",
                                    Instant{700000000.5 + i}, Instant{700259200.25 + number}, std::nullopt, 550, 300});
        store.entries.append(Entry{QStringLiteral("E-%1").arg(i), Instant{700000000.0 + number},
                                   QStringLiteral("Locação número %1 da versão %2").arg(i).arg(number), 550});
    }
    return store;
}

void removeDatabase(const QString& path) {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"})
        QFile::remove(path + suffix);
}

bool writeSmallPageFile(const QString& path, const Store& previous, const Store& current) {
    removeDatabase(path);
    RawDatabase raw(path);
    return raw.exec(QByteArray("PRAGMA page_size=4096;") + LocalDatabase::schema) &&
           raw.exec("INSERT INTO previous_state VALUES(1,'" + encodeStore(previous) +
                    "'); INSERT INTO state VALUES(1,'" + encodeStore(current) + "');");
}
