#include "screens/CashBook.h"

#include "exchange/CashDayExport.h"
#include "print/CashClosingPage.h"
#include "records/CashDay.h"
#include "records/DateText.h"
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

void CashBook::closing(ScreenHost& host) {
    const std::optional<QStringList> typed =
        host.form(QStringLiteral("FECHAMENTO DE CAIXA"), {{QStringLiteral("DIA"), dateText(host.now())}});
    if (!typed)
        return;
    const std::optional<QDate> day = typedDay(typed->first());
    if (!day) {
        host.alert(QStringLiteral("Data inválida"), QStringLiteral("Use datas no formato dd/mm/aaaa."));
        return;
    }
    const CashDay closed = cashDay(host.shop(), *day);
    ModalAlert dialog;
    dialog.title = cashDayTitle(*day);
    dialog.text = cashDayText(closed);
    dialog.buttons = {QStringLiteral("IMPRIMIR"), QStringLiteral("EXPORTAR CSV"), QStringLiteral("FECHAR")};
    dialog.escapeButton = 2; // Escape closes; it never asks where to export
    switch (host.styledModal(std::move(dialog)) - firstButtonAnswer) {
    case 0:
        host.openPrint(cashClosingPage(host.shop(), *day), QString::fromLatin1(cashClosingPageName));
        break;
    case 1:
        host.saveExport(cashDayCSV(closed), cashDayCSVFileName(*day));
        break;
    default: // FECHAR, or the dialog closed
        break;
    }
}
