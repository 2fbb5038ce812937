#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// Reading a print page as an HTML tokenizer does, to prove that no character of
// user text ever becomes markup: build the page once with the user's text and
// once with that text made neutral, and both must read as the same tags,
// attributes and texts.

// The character references the pages use, "&amp;" last so none is decoded twice.
inline QString decodedReferences(QString text) {
    return text.replace("&lt;", "<")
        .replace("&gt;", ">")
        .replace("&quot;", "\"")
        .replace("&#39;", "'")
        .replace("&amp;", "&");
}

// Each tag as its name and its attributes' names and decoded values, each run of
// text decoded (the pages' style and title hold no "<"). An apostrophe that ends an
// attribute early shows up here as a different value and an extra attribute.
inline QList<QStringList> pageTokens(const QString& page) {
    QList<QStringList> found;
    const auto isSpace = [](QChar c) {
        return c == u' ' || c == u'\n' || c == u'\t' || c == u'\f' || c == u'\r';
    };
    qsizetype i = 0;
    QString text;
    const auto flush = [&] {
        if (!text.isEmpty())
            found.append({QStringLiteral("#text"), decodedReferences(text)});
        text.clear();
    };
    while (i < page.size()) {
        const QChar next = i + 1 < page.size() ? page[i + 1] : QChar();
        if (page[i] != u'<' || !(next == u'!' || next == u'/' || next.isLetter())) {
            text += page[i++];
            continue;
        }
        const bool end = next == u'/';
        flush();
        if (next == u'!') {
            const qsizetype close = page.indexOf(u'>', i);
            i = close < 0 ? page.size() : close + 1;
            continue;
        }
        i += end ? 2 : 1;
        QStringList tag{end ? QStringLiteral("/") : QString()};
        while (i < page.size() && !isSpace(page[i]) && page[i] != u'/' && page[i] != u'>')
            tag[0] += page[i++].toLower();
        for (;;) {
            while (i < page.size() && (isSpace(page[i]) || page[i] == u'/'))
                ++i;
            if (i >= page.size() || page[i] == u'>')
                break;
            QString name(page[i++]);
            while (i < page.size() && !isSpace(page[i]) && page[i] != u'/' && page[i] != u'>' && page[i] != u'=')
                name += page[i++].toLower();
            QString value;
            if (page.mid(i, 1) == u"=" && ++i < page.size()) {
                const QChar quote = page[i];
                const bool quoted = quote == u'\'' || quote == u'"';
                for (i += quoted ? 1 : 0;
                     i < page.size() && (quoted ? page[i] != quote : !isSpace(page[i]) && page[i] != u'>');)
                    value += page[i++];
                i += quoted ? 1 : 0;
            }
            tag << name << decodedReferences(value);
        }
        ++i;
        found.append(tag);
    }
    flush();
    return found;
}

// The text with each character that has a meaning in HTML replaced by "_",
// which upper case leaves alone.
inline QString neutralText(QString text) {
    for (QChar special : {u'<', u'>', u'&', u'"', u'\''})
        text.replace(special, u'_');
    return text;
}

// The page's tokens with every special character in them read as "_": a page built
// from the user's text and one built from its neutral text must give the same.
inline QList<QStringList> neutralTokens(const QString& page) {
    QList<QStringList> tokens = pageTokens(page);
    for (QStringList& token : tokens)
        for (QString& piece : token)
            piece = neutralText(piece);
    return tokens;
}
