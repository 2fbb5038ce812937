// Print pages built from records whose texts come from the input, each checked
// against the same page built from neutral texts (support/MarkupCheck.h).
#include "print/CashClosingPage.h"
#include "print/Labels.h"
#include "print/MatrixReport.h"
#include "print/MemberCard.h"
#include "print/OverdueNotices.h"
#include "print/Receipt.h"
#include "support/MarkupCheck.h"

#include <cstdio>
#include <cstdlib>

namespace {

void compare(const QString& page, const QString& neutralPage) {
    const QString difference = markupDifference(page, neutralPage);
    if (!difference.isEmpty()) {
        std::fprintf(stderr, "pages differ:\n%s\n", qPrintable(difference));
        std::abort();
    }
}

struct Records {
    QString shop;
    Film film;
    Customer customer;
    QList<QStringList> rows;
    Store store; // a rental, a late one, a return, and the day's entries
};

Records records(const QStringList& f, qint64 code) {
    auto at = [&](int i) {
        return f.value(i);
    };
    Records r;
    r.shop = at(0);
    r.film = Film{at(1), at(2), at(3), 1 + code % 3, 550, code, 1994, false, at(4), at(5)};
    r.customer = Customer{at(6), at(7), at(8), code, at(9), at(10), at(11), at(12)};
    r.rows = {{at(2), at(3)}, {at(7), at(8), at(9)}};
    r.store.locadoraName = r.shop;
    r.store.films = {r.film};
    r.store.customers = {r.customer};
    for (int i = 0; i < 3; ++i)
        r.store.rentals.append(Rental{.id = QString::number(i),
                                      .film = r.film.id,
                                      .customer = r.customer.id,
                                      .start = Instant{699000000.0 + i},
                                      .due = Instant{699500000.0 - 400000 * i},
                                      .price = 550,
                                      .finePerDay = 300,
                                      .copy = i + 1});
    r.store.rentals[2].returned = Instant{700000000};
    r.store.rentals[2].fine = 300;
    r.store.entries = {Entry{at(1), Instant{700000000}, at(13), -code}, Entry{at(1), Instant{699990000}, at(14), code}};
    return r;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1 || size > 4096)
        return 0;
    const qint64 code = data[0] % 20 == 0 ? 99999 : data[0] % 20;
    const QStringList fields =
        QString::fromUtf8(reinterpret_cast<const char*>(data) + 1, qsizetype(size - 1)).split(u'\x1f');
    QStringList neutralFields;
    for (const QString& field : fields)
        neutralFields << neutralText(field);
    const Records given = records(fields, code), plain = records(neutralFields, code);
    compare(labelDocument({given.film}, given.shop), labelDocument({plain.film}, plain.shop));
    compare(memberDocument({given.customer}, given.shop), memberDocument({plain.customer}, plain.shop));
    const Instant now{700000000};
    compare(matrixReportDocument(matrixReportText(given.shop, now, given.rows)),
            matrixReportDocument(matrixReportText(plain.shop, now, plain.rows)));
    for (const CounterAct& act :
         {CounterAct{ReceiptKind::rental, {"0", "1"}}, CounterAct{ReceiptKind::giveBack, {"2"}}})
        compare(receiptPage(given.store, act), receiptPage(plain.store, act));
    compare(overdueNoticesPage(given.store, now), overdueNoticesPage(plain.store, now));
    compare(cashClosingPage(given.store, QDate(2023, 3, 8)), cashClosingPage(plain.store, QDate(2023, 3, 8)));
    return 0;
}
