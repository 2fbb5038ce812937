// Print pages built from records whose texts come from the input. Each page is
// built twice: with the texts as given and with every <, >, &, " and ' in them
// replaced by _ (which upper case leaves alone). Once the five escapes are read
// as _ too, both pages must be the same, so no character of user text ever
// became markup. An apostrophe may stand unescaped only in text or inside a
// double-quoted attribute.
#include "print/Labels.h"
#include "print/MatrixReport.h"
#include "print/MemberCard.h"

#include <cstdio>
#include <cstdlib>

namespace {

QString neutral(QString text) {
    for (QChar special : {u'<', u'>', u'&', u'"', u'\''})
        text.replace(special, u'_');
    return text;
}

QString entitiesAsX(QString page) {
    for (const char* entity : {"&amp;", "&lt;", "&gt;", "&quot;", "&#39;"})
        page.replace(QLatin1String(entity), QStringLiteral("_"));
    return page;
}

[[noreturn]] void differ(const QString& a, const QString& b, qsizetype at) {
    std::fprintf(stderr, "pages differ:\n%s\n---- with neutral texts:\n%s\n", qPrintable(a.mid(at - 200, 300)),
                 qPrintable(b.mid(at - 200, 300)));
    std::abort();
}

void compare(const QString& page, const QString& neutralPage) {
    const QString a = entitiesAsX(page), b = entitiesAsX(neutralPage);
    if (a.size() != b.size())
        differ(a, b, 0);
    enum { text, tag, doubleQuoted, singleQuoted } where = text;
    for (qsizetype i = 0; i < a.size(); ++i) {
        const QChar c = a[i];
        if (c != b[i] && !(c == u'\'' && b[i] == u'_' && (where == text || where == doubleQuoted)))
            differ(a, b, i);
        if (where == text && c == u'<')
            where = tag;
        else if (where == tag && c == u'>')
            where = text;
        else if (where == tag && c == u'"')
            where = doubleQuoted;
        else if (where == tag && c == u'\'')
            where = singleQuoted;
        else if ((where == doubleQuoted && c == u'"') || (where == singleQuoted && c == u'\''))
            where = tag;
    }
}

struct Records {
    QString shop;
    Film film;
    Customer customer;
    QList<QStringList> rows;
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
        neutralFields << neutral(field);
    const Records given = records(fields, code), plain = records(neutralFields, code);
    compare(labelDocument({given.film}, given.shop), labelDocument({plain.film}, plain.shop));
    compare(memberDocument({given.customer}, given.shop), memberDocument({plain.customer}, plain.shop));
    const Instant now{700000000};
    compare(matrixReportDocument(matrixReportText(given.shop, now, given.rows)),
            matrixReportDocument(matrixReportText(plain.shop, now, plain.rows)));
    return 0;
}
