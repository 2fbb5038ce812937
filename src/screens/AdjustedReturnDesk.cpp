#include "screens/AdjustedReturnDesk.h"

#include "records/AdjustedReturn.h"
#include "records/FilmCSVError.h"
#include "records/MoneyText.h"
#include "screens/RewindQuestion.h"
#include "screens/ScreenHost.h"

#include <algorithm>
#include <variant>

void AdjustedReturnDesk::adjustedReturn(ScreenHost& host) {
    const std::optional<QString> id = host.selected();
    if (!id)
        return;
    const Store& store = host.shop();
    const auto rental = std::find_if(store.rentals.cbegin(), store.rentals.cend(),
                                     [&id](const Rental& candidate) { return candidate.id == *id; });
    if (rental == store.rentals.cend() || rental->returned)
        return; // as FINALIZAR: a tape returned meanwhile needs no dialog
    const QString filmID = rental->film;

    const Instant now = host.now();
    const std::optional<QStringList> typed = host.form(QStringLiteral("DEVOLUÇÃO ESPECIAL"), adjustedReturnFields(now));
    if (!typed)
        return;
    const Ruled<AdjustedReturn> ruled =
        ::adjustedReturn(host.shop(), *id, typed->at(0), typed->at(1), typed->at(2), now);
    if (const auto* refusal = std::get_if<RuleRefusal>(&ruled)) {
        host.alert(refusal->title, refusal->text);
        return;
    }
    const AdjustedReturn& checked = std::get<AdjustedReturn>(ruled);

    // The rewind question of every return, with the fine of the instant typed.
    const auto film = std::find_if(host.shop().films.cbegin(), host.shop().films.cend(),
                                   [&filmID](const Film& candidate) { return candidate.id == filmID; });
    const std::optional<bool> rewound =
        askRewound(host, rewindQuestionText(film != host.shop().films.cend() ? film->title : QString(), checked.fine));
    if (!rewound)
        return;

    Store changed;
    try {
        changed = adjustedReturnedStore(host.shop(), checked, *rewound);
    } catch (const FilmCSVError& error) {
        host.alert(QStringLiteral("Devolução não salva"), error.description());
        return;
    }
    if (host.commit(changed))
        host.render();
}
