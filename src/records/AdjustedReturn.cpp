#include "records/AdjustedReturn.h"

#include "records/DateText.h"
#include "records/MoneyText.h"

#include <algorithm>

QList<QPair<QString, QString>> adjustedReturnFields(Instant now) {
    return {{QStringLiteral("DEVOLVIDA EM"), dateTimeText(now)},
            {QStringLiteral("ABONO (R$)"), QStringLiteral("0,00")},
            {QStringLiteral("MOTIVO"), QString()}};
}

Ruled<AdjustedReturn> adjustedReturn(const Store& store, const QString& rentalID, const QString& returnedAt,
                                     const QString& forgiven, const QString& reason, Instant now) {
    const auto rental = std::find_if(store.rentals.cbegin(), store.rentals.cend(), [&](const Rental& candidate) {
        return candidate.id == rentalID && isOpen(candidate);
    });
    if (rental == store.rentals.cend())
        return RuleRefusal{QStringLiteral("Devolução não salva"), QStringLiteral("Esta fita já foi devolvida.")};

    std::optional<Instant> returned = parseDateTime(returnedAt.trimmed());
    if (!returned)
        return RuleRefusal{QStringLiteral("Dados inválidos"),
                           QStringLiteral("Informe a data da devolução como dd/mm/aaaa hh:mm.")};
    // The operator types minutes: within the minute the rental started the return
    // is taken at the start itself, so a tape brought straight back is no refusal.
    if (*returned < rental->start) {
        if (dateTimeText(*returned) != dateTimeText(rental->start))
            return RuleRefusal{QStringLiteral("Data inválida"),
                               QStringLiteral("A fita saiu em %1; a devolução não pode ser anterior.")
                                   .arg(dateTimeText(rental->start))};
        returned = rental->start;
    }
    if (*returned > now)
        return RuleRefusal{QStringLiteral("Data inválida"),
                           QStringLiteral("A devolução não pode ser depois de agora (%1).").arg(dateTimeText(now))};

    const QString amountText = forgiven.trimmed();
    const std::optional<qint64> amount = amountText.isEmpty() ? std::optional<qint64>(0) : cents(amountText);
    if (!amount || *amount < 0)
        return RuleRefusal{QStringLiteral("Dados inválidos"),
                           QStringLiteral("Informe o abono em reais, por exemplo 5,00.")};
    const qint64 fine = fineSoFar(*rental, *returned);
    if (*amount > fine)
        return RuleRefusal{
            QStringLiteral("Abono maior que a multa"),
            QStringLiteral("A multa desta devolução é %1; o abono não pode passar dela.").arg(money(fine))};
    const QString why = reason.trimmed();
    if (*amount > 0 && why.isEmpty())
        return RuleRefusal{QStringLiteral("Informe o motivo"),
                           QStringLiteral("Um abono de multa precisa de um motivo.")};
    return AdjustedReturn{.rental = rental->id,
                          .returned = *returned,
                          .fine = fine,
                          .forgiven = *amount,
                          .reason = *amount > 0 ? why : QString()};
}

Store adjustedReturnedStore(const Store& store, const AdjustedReturn& checked, bool rewound) {
    Store changed = returnedStore(store, checked.rental, rewound, checked.returned);
    if (checked.forgiven > 0) {
        const auto rental = std::find_if(store.rentals.cbegin(), store.rentals.cend(), [&](const Rental& candidate) {
            return candidate.id == checked.rental && isOpen(candidate);
        });
        const auto film = std::find_if(store.films.cbegin(), store.films.cend(),
                                       [&](const Film& candidate) { return candidate.id == rental->film; });
        const QString title = film != store.films.cend() ? film->title : QStringLiteral("Fita");
        changed.entries.append({newIdentifier(), checked.returned,
                                QStringLiteral("Abono de multa: ") + title + QStringLiteral(" — ") + checked.reason,
                                -checked.forgiven});
    }
    return changed;
}
