#pragma once

#include <QString>
#include <algorithm>

// A print page is built twice: with the user's texts, and with every <, >, &, "
// and ' in those texts replaced by _ (which upper case leaves alone). Read with
// the five escapes as _ too, the two pages must agree character for character,
// except that an apostrophe may stand unescaped in text or inside a double-quoted
// attribute. Then no character of user text became markup: every tag and
// attribute is the page's own and every text reads as the user wrote it.

inline QString neutralText(QString text) {
    for (QChar special : {u'<', u'>', u'&', u'"', u'\''})
        text.replace(special, u'_');
    return text;
}

// Empty when the pages agree; otherwise both of them around the first place they differ.
inline QString markupDifference(const QString& page, const QString& neutralPage) {
    QString a = page, b = neutralPage;
    for (const char* entity : {"&amp;", "&lt;", "&gt;", "&quot;", "&#39;"}) {
        a.replace(QLatin1String(entity), QStringLiteral("_"));
        b.replace(QLatin1String(entity), QStringLiteral("_"));
    }
    const auto around = [&](qsizetype at) {
        return a.mid(std::max<qsizetype>(0, at - 200), 300) + "\n---- with neutral texts:\n" +
               b.mid(std::max<qsizetype>(0, at - 200), 300);
    };
    enum { text, tag, doubleQuoted, singleQuoted } where = text;
    for (qsizetype i = 0; i < std::min(a.size(), b.size()); ++i) {
        const QChar c = a[i];
        if (c != b[i] && !(c == u'\'' && b[i] == u'_' && (where == text || where == doubleQuoted)))
            return around(i);
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
    return a.size() == b.size() ? QString() : around(std::min(a.size(), b.size()));
}
