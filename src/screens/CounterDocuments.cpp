#include "screens/CounterDocuments.h"

#include "print/OverdueNotices.h"
#include "print/Receipt.h"
#include "screens/ScreenHost.h"

void CounterDocuments::printReceipt(ScreenHost& host, const std::optional<CounterAct>& lastAct) {
    const QString page = receiptPage(host.shop(), lastAct);
    if (!page.isEmpty())
        host.openPrint(page, QString::fromLatin1(receiptPageName));
}

void CounterDocuments::printOverdueNotices(ScreenHost& host) {
    const QString page = overdueNoticesPage(host.shop(), host.now());
    if (page.isEmpty()) {
        host.alert(QStringLiteral("AVISOS"), QStringLiteral("Nenhuma fita em atraso."));
        return;
    }
    host.openPrint(page, QString::fromLatin1(overdueNoticesPageName));
}
