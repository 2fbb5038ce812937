#pragma once

#include "records/RentalRules.h"

#include <QHash>
#include <variant>

// Lookups a scan needs, built once per store version so that reading a code never
// walks the rental history: film and customer by code, and the open rental holding
// each copy (legacy rentals without a copy number hold the copies freeCopy gives them).
class ScanIndex {
public:
    explicit ScanIndex(const Store& store);

    // True while store is the version this index was built from: its lists still
    // share their data with the copy kept here, which any change would have detached.
    bool isFor(const Store& store) const;

    // Pointers into the kept store, valid as long as this index.
    const Store& store() const { return shop; }
    const Film* filmByCode(qint64 code) const;
    const Customer* customerByCode(qint64 code) const;
    const Film* filmByID(const QString& id) const;
    const Customer* customerByID(const QString& id) const;
    const Rental* openRental(const QString& filmID, qint64 copy) const;
    // The copy an open rental of this index's store holds (found through it); nothing
    // for one that holds none because every copy was taken, or any other rental.
    std::optional<qint64> heldCopy(const Rental& rental) const;
    QList<const Rental*> openRentalsOf(const QString& customerID) const;

private:
    Store shop;
    QHash<qint64, qsizetype> filmCodes, customerCodes;
    QHash<QString, qsizetype> filmIDs, customerIDs;
    QHash<QString, QHash<qint64, qsizetype>> openCopies; // film id → copy → rental index
    QHash<qsizetype, qint64> copyOfRental;               // rental index → copy it holds
    QHash<QString, QList<qsizetype>> openByCustomer;
};

// A tape scanned while it is out: return it.
struct ScanReturn {
    Rental rental;
    QString copyCode; // "COD-0001-002"
    QString title;
    QString customerName; // empty when the customer is not in the store
    qint64 fineSoFar = 0;
};

// A tape scanned while it is on the shelf: rent exactly this copy.
struct ScanRent {
    Film film;
    qint64 copy = 0;
    QString copyCode;
};

struct LateRental {
    Rental rental;
    QString copyCode;
    QString title;
    qint64 daysLate = 0;
    qint64 fineSoFar = 0;
};

// A member card: choose this customer; late is what they owe on open rentals past due.
struct ScanCustomer {
    Customer customer;
    QList<LateRental> late; // in store order
    qint64 totalFine = 0;
};

// A film code without a copy: choose this film.
struct ScanFilm {
    Film film;
};

using ScanTarget = std::variant<ScanReturn, ScanRent, ScanCustomer, ScanFilm, RuleRefusal>;

// What a scanned or typed code stands for. Case and surrounding spaces are ignored,
// and "0001-002" reads as "COD-0001-002". A code of no record, of a removed film or
// customer, or of a copy the film does not have is refused with a sentence saying
// what was read and why. An open rental wins over a removal: its tape can still
// come back.
ScanTarget scanTarget(const ScanIndex& index, const QString& text, Instant now);
ScanTarget scanTarget(const Store& store, const QString& text, Instant now); // builds a one-off index

// Keeps the index of the latest store version and reads scans against it.
class ScanReader {
public:
    const ScanIndex& index(const Store& store);
    ScanTarget read(const Store& store, const QString& text, Instant now) {
        return scanTarget(index(store), text, now);
    }

private:
    std::optional<ScanIndex> current;
};

// Texts of the dialogs and status line a scan leads to.
QString scanReturnText(const ScanReturn& target); // tape, customer, due date and fine so far
QString returnedStatus(const ScanReturn& target); // "DEVOLVIDA: COD-0001-002 — Título"
QString lateRentalsTitle(const ScanCustomer& target);
QString lateRentalsText(const ScanCustomer& target); // one line per late tape, then the total
