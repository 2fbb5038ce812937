#include "print/Labels.h"

#include "print/PrintPage.h"
#include "records/Codes.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

namespace {

// Code 39 patterns: nine elements, bar first, most significant bit first, 1 = wide.
std::optional<int> code39Pattern(QChar c) {
    switch (c.unicode()) {
    case u'0':
        return 52;
    case u'1':
        return 289;
    case u'2':
        return 97;
    case u'3':
        return 352;
    case u'4':
        return 49;
    case u'5':
        return 304;
    case u'6':
        return 112;
    case u'7':
        return 37;
    case u'8':
        return 292;
    case u'9':
        return 100;
    case u'C':
        return 328;
    case u'O':
        return 274;
    case u'D':
        return 25;
    case u'L':
        return 67;
    case u'I':
        return 76;
    case u'-':
        return 133;
    case u'*':
        return 148;
    default:
        return std::nullopt;
    }
}

// Plain decimal with "." for the forms' answers; no grouping, no exponent games.
std::optional<double> decimalNumber(QString text) {
    text.replace(u',', u'.');
    bool ok = false;
    const double value = QLocale::c().toDouble(text, &ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace

QString barcodeSVG(const QString& value) {
    const QString encoded = u'*' + value + u'*';
    QList<int> patterns;
    for (const QChar c : encoded) {
        const auto pattern = code39Pattern(c);
        if (!pattern)
            return QString();
        patterns.append(*pattern);
    }
    int x = 10;
    QString bars;
    for (const int pattern : patterns) {
        for (int i = 0; i < 9; ++i) {
            const int w = (pattern >> (8 - i)) & 1 ? 3 : 1;
            if (i % 2 == 0)
                bars += QStringLiteral("<rect x='%1' y='0' width='%2' height='30'/>").arg(x).arg(w);
            x += w;
        }
        x += 1;
    }
    const int total = x + 9;
    // Only characters of the table get this far, so the label needs no escaping.
    return QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 ") + QString::number(total) +
           QStringLiteral(" 30' preserveAspectRatio='none' aria-label='") + value + QStringLiteral("' style='width:") +
           realNumberText(total * 0.25) +
           QStringLiteral("mm;height:7.5mm;display:block;background:white;fill:black'>") + bars +
           QStringLiteral("</svg>");
}

double requiredLabelWidth(const QList<Film>& films) {
    double widest = 70.0;
    for (const Film& film : films) {
        const QString last = copyCode(film.code, film.copies);
        widest = std::max(widest, double(last.size() + 2) * 4.0 + 6.75);
    }
    return widest;
}

namespace {

struct FilmLabels {
    const Film& film;
    qint64 firstCopy;
    qint64 lastCopy;
};

QString labelPage(const QList<FilmLabels>& runs, const QString& shopName, LabelSize size, qint64 blanks) {
    const QString sizeStyle = QStringLiteral("<section class='label' style='width:") + realNumberText(size.width) +
                              QStringLiteral("mm;height:") + realNumberText(size.height) + QStringLiteral("mm");
    // A blank keeps its place in the flow, so the labels land where the sheet still has some.
    QString labels = QStringLiteral("%1;visibility:hidden'></section>").arg(sizeStyle).repeated(int(blanks));
    const QString style = sizeStyle + QStringLiteral("'><p class='name'>");
    const QString shop = escapedHTML(shopName);
    for (const FilmLabels& run : runs) {
        for (qint64 copy = run.firstCopy; copy <= run.lastCopy; ++copy) {
            labels += style + shop + QStringLiteral(" — ") + escapedHTML(run.film.title) + QStringLiteral("</p>") +
                      barcodeSVG(copyCode(run.film.code, copy)) + QStringLiteral("<p class='code'>") +
                      inventoryCode(run.film.code) + QStringLiteral(" / EX. ") + QString::number(copy) +
                      QStringLiteral("</p></section>");
        }
    }
    const QString title = QStringLiteral("ETIQUETAS VHS — ") + realNumberText(size.width) + QStringLiteral(" × ") +
                          realNumberText(size.height) + QStringLiteral(" mm");
    return printDocument(title, labels);
}

// A count typed in the form: plain digits, surrounding spaces allowed.
std::optional<qint64> formCount(const QString& text) {
    const QString digits = text.trimmed();
    if (digits.isEmpty() || digits.size() > 18 ||
        !std::all_of(digits.cbegin(), digits.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; }))
        return std::nullopt;
    return digits.toLongLong();
}

} // namespace

QString labelDocument(const QList<Film>& films, const QString& shopName, double width, double height) {
    QList<FilmLabels> runs;
    for (const Film& film : films)
        runs.append({film, 1, film.copies});
    return labelPage(runs, shopName, {width, height}, 0);
}

QString labelDocument(const Film& film, const QString& shopName, const LabelSheet& sheet) {
    return labelPage({{film, sheet.firstCopy, sheet.lastCopy}}, shopName, sheet.size, sheet.firstPosition - 1);
}

qint64 labelsPerSheet(const LabelSize& size) {
    // A4 less the page's 10 mm margins; each label is followed by the 3 mm gap of the flow.
    constexpr double across = 190.0, down = 277.0, gap = 3.0;
    const auto fitting = [](double room, double each) {
        return std::max<qint64>(1, qint64(std::floor((room + gap) / (each + gap))));
    };
    return fitting(across, size.width) * fitting(down, size.height);
}

QList<QPair<QString, QString>> labelFormFields(const Film& film) {
    return {{QStringLiteral("LARGURA"), proposedLabelWidth(film)},
            {QStringLiteral("ALTURA"), QStringLiteral("18")},
            {QStringLiteral("PRIMEIRA ETIQUETA"), QStringLiteral("1")},
            {QStringLiteral("EXEMPLARES"), QStringLiteral("TODOS")}};
}

std::optional<LabelSheet> chosenLabelSheet(const QStringList& answers, const Film& film) {
    if (answers.size() != 4)
        return std::nullopt;
    const std::optional<LabelSize> size = chosenLabelSize(answers.at(0), answers.at(1), film);
    if (!size)
        return std::nullopt;
    LabelSheet sheet{.size = *size, .firstCopy = 1, .lastCopy = film.copies};

    if (!answers.at(2).trimmed().isEmpty()) {
        const std::optional<qint64> position = formCount(answers.at(2));
        if (!position || *position < 1 || *position > labelsPerSheet(*size))
            return std::nullopt;
        sheet.firstPosition = *position;
    }

    const QString copies = answers.at(3).trimmed();
    if (!copies.isEmpty() && copies.compare(QStringLiteral("TODOS"), Qt::CaseInsensitive) != 0) {
        const QStringList ends = copies.split(u'-');
        const std::optional<qint64> first = ends.size() <= 2 ? formCount(ends.first()) : std::nullopt;
        const std::optional<qint64> last = ends.size() == 2 ? formCount(ends.last()) : first;
        if (!first || !last || *first < 1 || *first > *last || *last > film.copies)
            return std::nullopt;
        sheet.firstCopy = *first;
        sheet.lastCopy = *last;
    }
    if (sheet.firstCopy > sheet.lastCopy) // a film without copies has no label to print
        return std::nullopt;
    return sheet;
}

std::optional<LabelSize> chosenLabelSize(const QString& widthText, const QString& heightText, const Film& film) {
    const auto width = decimalNumber(widthText);
    const auto height = decimalNumber(heightText);
    if (!width || !height)
        return std::nullopt;
    if (*width < requiredLabelWidth({film}) || *width > 190.0 || *height < 18.0 || *height > 50.0)
        return std::nullopt;
    return LabelSize{*width, *height};
}

QString proposedLabelWidth(const Film& film) {
    return QString::number(qint64(std::ceil(requiredLabelWidth({film}))));
}
