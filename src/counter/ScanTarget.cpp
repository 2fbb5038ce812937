#include "counter/ScanTarget.h"

#include "records/Codes.h"
#include "records/DateText.h"
#include "records/MoneyText.h"

#include <QSet>
#include <algorithm>
#include <functional>
#include <limits>

ScanIndex::ScanIndex(const Store& store) : shop(store) {
    for (qsizetype i = 0; i < shop.films.size(); ++i) {
        const Film& film = shop.films.at(i);
        filmIDs.insert(film.id, i);
        // The first holder of a code wins, as everywhere codes are read.
        if (film.code && !filmCodes.contains(*film.code))
            filmCodes.insert(*film.code, i);
    }
    for (qsizetype i = 0; i < shop.customers.size(); ++i) {
        const Customer& customer = shop.customers.at(i);
        customerIDs.insert(customer.id, i);
        if (customer.code && !customerCodes.contains(*customer.code))
            customerCodes.insert(*customer.code, i);
    }

    // Copies as freeCopy sees them: numbered rentals first, then each legacy rental
    // in store order takes the lowest copy left, if any.
    QHash<QString, QList<qsizetype>> legacy;
    for (qsizetype i = 0; i < shop.rentals.size(); ++i) {
        const Rental& rental = shop.rentals.at(i);
        if (!isOpen(rental))
            continue;
        openByCustomer[rental.customer].append(i);
        if (!rental.copy) {
            legacy[rental.film].append(i);
        } else if (QHash<qint64, qsizetype>& copies = openCopies[rental.film]; !copies.contains(*rental.copy)) {
            copies.insert(*rental.copy, i);
            copyOfRental.insert(i, *rental.copy);
        }
    }
    for (auto it = legacy.cbegin(); it != legacy.cend(); ++it) {
        const Film* film = filmByID(it.key());
        QHash<qint64, qsizetype>& copies = openCopies[it.key()];
        qint64 lowest = 1;
        for (const qsizetype i : it.value()) {
            while (copies.contains(lowest))
                ++lowest;
            if (!film || lowest > film->copies)
                break;
            copies.insert(lowest, i);
            copyOfRental.insert(i, lowest);
        }
    }
}

bool ScanIndex::isFor(const Store& store) const {
    const auto same = [](const auto& a, const auto& b) {
        return a.size() == b.size() && a.constData() == b.constData();
    };
    return same(store.films, shop.films) && same(store.customers, shop.customers) && same(store.rentals, shop.rentals);
}

const Film* ScanIndex::filmByCode(qint64 code) const {
    const auto found = filmCodes.constFind(code);
    return found == filmCodes.cend() ? nullptr : &shop.films.at(*found);
}

const Customer* ScanIndex::customerByCode(qint64 code) const {
    const auto found = customerCodes.constFind(code);
    return found == customerCodes.cend() ? nullptr : &shop.customers.at(*found);
}

const Film* ScanIndex::filmByID(const QString& id) const {
    const auto found = filmIDs.constFind(id);
    return found == filmIDs.cend() ? nullptr : &shop.films.at(*found);
}

const Customer* ScanIndex::customerByID(const QString& id) const {
    const auto found = customerIDs.constFind(id);
    return found == customerIDs.cend() ? nullptr : &shop.customers.at(*found);
}

const Rental* ScanIndex::openRental(const QString& filmID, qint64 copy) const {
    const auto copies = openCopies.constFind(filmID);
    if (copies == openCopies.cend())
        return nullptr;
    const auto found = copies->constFind(copy);
    return found == copies->cend() ? nullptr : &shop.rentals.at(*found);
}

std::optional<qint64> ScanIndex::heldCopy(const Rental& rental) const {
    // Only a rental of this index's own store has a place in it.
    const Rental* first = shop.rentals.constData();
    if (std::less<const Rental*>()(&rental, first) || !std::less<const Rental*>()(&rental, first + shop.rentals.size()))
        return std::nullopt;
    const auto found = copyOfRental.constFind(&rental - first);
    return found == copyOfRental.cend() ? std::nullopt : std::optional<qint64>(*found);
}

QList<const Rental*> ScanIndex::openRentalsOf(const QString& customerID) const {
    QList<const Rental*> rentals;
    for (const qsizetype i : openByCustomer.value(customerID))
        rentals.append(&shop.rentals.at(i));
    return rentals;
}

namespace {

struct ReadCode {
    enum Kind { FilmCode, CopyCode, CardCode } kind;
    qint64 code = 0;
    qint64 copy = 0;
};

bool digitsOnly(const QString& piece) {
    return !piece.isEmpty() &&
           std::all_of(piece.cbegin(), piece.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

// Only the shapes printed on labels and cards: "COD-0001", "COD-0001-002", "CLI-0001",
// with "COD-" optional. Anything else is no code, even where numericCode would read it.
std::optional<ReadCode> readCode(QString code) {
    if (!code.startsWith(u"COD-") && !code.startsWith(u"CLI-"))
        code.prepend(QStringLiteral("COD-"));
    const QStringList pieces = code.split(u'-');
    if (pieces.size() < 2 || pieces.size() > 3 || !std::all_of(pieces.cbegin() + 1, pieces.cend(), digitsOnly))
        return std::nullopt;
    const std::optional<qint64> number = numericCode(code);
    if (!number)
        return std::nullopt;
    if (pieces.first() == u"CLI")
        return pieces.size() == 2 ? std::optional(ReadCode{ReadCode::CardCode, *number}) : std::nullopt;
    if (pieces.size() == 2)
        return ReadCode{ReadCode::FilmCode, *number};
    const std::optional<qint64> copy = requestedCopy(code);
    if (!copy)
        return std::nullopt;
    return ReadCode{ReadCode::CopyCode, *number, *copy};
}

RuleRefusal refused(const QString& text) {
    return RuleRefusal{QStringLiteral("Código recusado"), text};
}

qint64 saturatingSum(qint64 a, qint64 b) {
    qint64 sum = 0;
    if (__builtin_add_overflow(a, b, &sum))
        return b < 0 ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
    return sum;
}

QString rentalCopyCode(const ScanIndex& index, const Rental& rental, const Film* film) {
    if (!film)
        return QString();
    const std::optional<qint64> copy = index.heldCopy(rental);
    return copy ? copyCode(film->code, *copy) : inventoryCode(film->code);
}

ScanTarget copyTarget(const ScanIndex& index, const QString& read, const ReadCode& code, Instant now) {
    const Film* film = index.filmByCode(code.code);
    if (!film)
        return refused(QStringLiteral("O código %1 não é de nenhuma fita cadastrada.").arg(read));
    if (const Rental* rental = index.openRental(film->id, code.copy)) {
        const Customer* customer = index.customerByID(rental->customer);
        return ScanReturn{.rental = *rental,
                          .copyCode = copyCode(film->code, code.copy),
                          .title = film->title,
                          .customerName = customer ? customer->name : QString(),
                          .fineSoFar = fineSoFar(*rental, now)};
    }
    if (film->deleted.value_or(false))
        return refused(QStringLiteral("O código %1 é de %2, filme removido do acervo.").arg(read, film->title));
    if (code.copy < 1 || code.copy > film->copies)
        return refused(QStringLiteral("O código %1 pede o exemplar %2, mas %3 tem %4.")
                           .arg(read)
                           .arg(code.copy)
                           .arg(film->title, film->copies == 1 ? QStringLiteral("só 1 exemplar")
                                                               : QStringLiteral("%1 exemplares").arg(film->copies)));
    return ScanRent{.film = *film, .copy = code.copy, .copyCode = copyCode(film->code, code.copy)};
}

ScanTarget cardTarget(const ScanIndex& index, const QString& read, qint64 code, Instant now) {
    const Customer* customer = index.customerByCode(code);
    if (!customer)
        return refused(QStringLiteral("O código %1 não é de nenhum cliente cadastrado.").arg(read));
    if (customer->deleted.value_or(false))
        return refused(QStringLiteral("O código %1 é de %2, cliente removido do cadastro.").arg(read, customer->name));
    ScanCustomer target{.customer = *customer};
    for (const Rental* rental : index.openRentalsOf(customer->id)) {
        if (!isLate(*rental, now))
            continue;
        const Film* film = index.filmByID(rental->film);
        const LateRental late{.rental = *rental,
                              .copyCode = rentalCopyCode(index, *rental, film),
                              .title = film ? film->title : QStringLiteral("Fita"),
                              .daysLate = overdue(*rental, now),
                              .fineSoFar = fineSoFar(*rental, now)};
        target.totalFine = saturatingSum(target.totalFine, late.fineSoFar);
        target.late.append(late);
    }
    return target;
}

} // namespace

ScanTarget scanTarget(const ScanIndex& index, const QString& text, Instant now) {
    const QString read = text.trimmed().toUpper();
    const std::optional<ReadCode> code = readCode(read);
    if (!code)
        return refused(QStringLiteral("O texto lido, “%1”, não é código de fita nem de cliente.").arg(read));
    switch (code->kind) {
    case ReadCode::CardCode:
        return cardTarget(index, read, code->code, now);
    case ReadCode::CopyCode:
        return copyTarget(index, read, *code, now);
    case ReadCode::FilmCode:
        break;
    }
    const Film* film = index.filmByCode(code->code);
    if (!film)
        return refused(QStringLiteral("O código %1 não é de nenhuma fita cadastrada.").arg(read));
    if (film->deleted.value_or(false))
        return refused(QStringLiteral("O código %1 é de %2, filme removido do acervo.").arg(read, film->title));
    return ScanFilm{*film};
}

ScanTarget scanTarget(const Store& store, const QString& text, Instant now) {
    return scanTarget(ScanIndex(store), text, now);
}

const ScanIndex& ScanReader::index(const Store& store) {
    if (!current || !current->isFor(store))
        current.emplace(store);
    return *current;
}

QString scanReturnText(const ScanReturn& target) {
    return target.copyCode + QStringLiteral(" — ") + target.title + QStringLiteral("\nCliente: ") +
           target.customerName + QStringLiteral("\nData de devolução: ") + dateText(target.rental.due) +
           QStringLiteral("\nMulta por atraso: ") + money(target.fineSoFar) +
           QStringLiteral("\n[N] aplica taxa simbólica de R$ 1,00.\nConfirmar registra a devolução.");
}

QString returnedStatus(const ScanReturn& target) {
    return QStringLiteral("DEVOLVIDA: ") + target.copyCode + QStringLiteral(" — ") + target.title;
}

QString lateRentalsTitle(const ScanCustomer& target) {
    return QStringLiteral("FITAS ATRASADAS — ") + target.customer.name;
}

QString lateRentalsText(const ScanCustomer& target) {
    QStringList lines;
    for (const LateRental& late : target.late)
        lines.append(late.title + QStringLiteral(" (") + late.copyCode + QStringLiteral(") — devolução ") +
                     dateText(late.rental.due) + QStringLiteral(" — ") +
                     (late.daysLate == 1 ? QStringLiteral("1 dia") : QStringLiteral("%1 dias").arg(late.daysLate)) +
                     QStringLiteral(" de atraso — ") + money(late.fineSoFar));
    lines.append(QStringLiteral("Total: ") + money(target.totalFine));
    return lines.join(u'\n');
}
