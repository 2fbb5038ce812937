#include "exchange/BackupRestore.h"

#include "files/FileWriting.h"
#include "records/Codes.h"
#include "records/DateText.h"
#include "records/FilmCSVError.h"
#include "records/StoreJSON.h"

namespace {

QString counted(qsizetype count, const char* one, const char* many) {
    return QString::number(count) + u' ' + QString::fromUtf8(count == 1 ? one : many);
}

QString countsText(const StoreCounts& counts) {
    QString text = counted(counts.films, "filme", "filmes") + QStringLiteral(", ") +
                   counted(counts.customers, "cliente", "clientes") + QStringLiteral(", ") +
                   counted(counts.rentals, "locação", "locações") + QStringLiteral(", ") +
                   counted(counts.entries, "lançamento", "lançamentos") + QStringLiteral(" no caixa");
    if (counts.newestRental)
        text += QStringLiteral("; locação mais recente em ") + dateTimeText(*counts.newestRental);
    return text + u'.';
}

} // namespace

Store restoredStore(const QByteArray& bytes) {
    Store store;
    try {
        store = decodeStore(bytes);
    } catch (const StoreJSONError& error) {
        throw FilmCSVError::invalid(error.description());
    }
    // As start-up: the next launch would otherwise do it, and the report's total
    // would jump between the restore and that launch.
    store = assigningCustomerCodes(assigningFilmCodes(std::move(store)));
    if (!store.reportRentalBaseline)
        store.reportRentalBaseline = store.rentals.size();
    return store;
}

Store restoredStoreFromFile(const QString& path) {
    QByteArray bytes;
    try {
        bytes = readWholeFile(path);
    } catch (const FileError& error) {
        throw FilmCSVError::invalid(error.description());
    }
    return restoredStore(bytes);
}

StoreCounts storeCounts(const Store& store) {
    StoreCounts counts{.films = store.films.size(),
                       .customers = store.customers.size(),
                       .rentals = store.rentals.size(),
                       .entries = store.entries.size()};
    for (const Rental& rental : store.rentals)
        if (!counts.newestRental || *counts.newestRental < rental.start)
            counts.newestRental = rental.start;
    return counts;
}

QString restoreQuestion(const Store& current, const Store& restored) {
    return QStringLiteral("Agora: ") + countsText(storeCounts(current)) + QStringLiteral("\nNo arquivo: ") +
           countsText(storeCounts(restored)) +
           QStringLiteral("\nRestaurar substitui todos os dados pelos do arquivo; os de agora ficam guardados como "
                          "versão anterior no banco local.");
}
