#include "screens/CashBook.h"

#include "records/RentalRules.h"
#include "screens/ScreenHost.h"

void CashBook::cashEntry(ScreenHost& host) {
    const std::optional<QStringList> typed =
        host.form(QStringLiteral("Caixa"), {{QStringLiteral("DESCRIÇÃO"), QString()},
                                            {QStringLiteral("TIPO: ENTRADA OU SAÍDA"), QStringLiteral("ENTRADA")},
                                            {QStringLiteral("VALOR (R$)"), QString()}});
    if (!typed)
        return;
    const Ruled<Store> entered = cashEntryStore(host.shop(), typed->at(0), typed->at(1), typed->at(2), host.now());
    if (const auto* refusal = std::get_if<RuleRefusal>(&entered)) {
        // A silent refusal: the operator sees the list unchanged, nothing more to say.
        if (!refusal->silent())
            host.alert(refusal->title, refusal->text);
        return;
    }
    if (host.commit(std::get<Store>(entered)))
        host.render();
}
