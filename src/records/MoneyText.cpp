#include "records/MoneyText.h"

#include <charconv>
#include <cmath>

namespace {

bool isAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

} // namespace

// The amount comes from its decimal digits as text, so "0,29" is exactly 29
// centavos; a double only judges whether it is whole.
//
// Only a whole text that is a number is accepted: anything after the digits
// ("5,50 reais", "1.000,50", "1e3") makes the amount absent rather than being
// read up to the first odd character. An operator who typed more than a number
// meant something this reading cannot know.
std::optional<qint64> cents(const QString& text) {
    // Only spaces and tabs are trimmed; a line break leaves the text unreadable.
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && (text[begin] == u' ' || text[begin] == u'\t'))
        ++begin;
    while (end > begin && (text[end - 1] == u' ' || text[end - 1] == u'\t'))
        --end;

    qsizetype i = begin;
    bool negative = false;
    if (i < end && (text[i] == u'+' || text[i] == u'-')) {
        negative = text[i] == u'-';
        ++i;
    }

    QString whole;
    while (i < end && isAsciiDigit(text[i]))
        whole.append(text[i++]);

    QString fraction;
    // "," is the decimal comma the operator types; "." is read the same way and
    // is never a thousands separator.
    if (i < end && (text[i] == u',' || text[i] == u'.')) {
        ++i;
        while (i < end && isAsciiDigit(text[i]))
            fraction.append(text[i++]);
    }
    if (i != end || (whole.isEmpty() && fraction.isEmpty()))
        return std::nullopt;

    while (whole.size() > 1 && whole.front() == u'0')
        whole.remove(0, 1);
    if (whole.isEmpty())
        whole = QStringLiteral("0");
    const bool fractionIsZero = fraction.count(u'0') == fraction.size();

    // 0 … 1 000 000 reais, judged on the exact decimal number.
    if (whole.size() > 7 || whole.toLongLong() > 1'000'000 || (whole.toLongLong() == 1'000'000 && !fractionIsZero))
        return std::nullopt;

    // The product by 100 must be whole as a double: "5,505" is refused, while
    // digits below a double's resolution ("5,50000000000000001") are not.
    const QString centDigits = (fraction.left(2) + QStringLiteral("00")).left(2);
    const QByteArray product = (whole + centDigits + u'.' + fraction.mid(2) + u'0').toLatin1();
    double value = 0;
    std::from_chars(product.data(), product.data() + product.size(), value);
    if (std::round(value) != value)
        return std::nullopt;
    const qint64 amount = whole.toLongLong() * 100 + centDigits.toLongLong();
    if (negative && amount != 0)
        return std::nullopt;
    return amount;
}

// Written by hand so the text never depends on the machine's locale data.
QString money(qint64 amount) {
    // Unsigned, so the most negative amount has a magnitude too.
    const quint64 magnitude = amount < 0 ? quint64(0) - quint64(amount) : quint64(amount);
    const QString reais = QString::number(magnitude / 100);

    QString grouped;
    for (qsizetype k = 0; k < reais.size(); ++k) {
        if (k > 0 && (reais.size() - k) % 3 == 0)
            grouped.append(u'.');
        grouped.append(reais[k]);
    }
    const QString centavos = QStringLiteral("%1").arg(magnitude % 100, 2, 10, QChar(u'0'));
    return (amount < 0 ? QStringLiteral("-") : QString()) + QStringLiteral("R$\u00A0") + grouped + u',' + centavos;
}
