#include "print/PrintPage.h"

#include <QLocale>
#include <QTextBoundaryFinder>
#include <cmath>

QString escapedHTML(const QString& text) {
    QString escaped = text;
    escaped.replace(u'&', QStringLiteral("&amp;"));
    escaped.replace(u'<', QStringLiteral("&lt;"));
    escaped.replace(u'>', QStringLiteral("&gt;"));
    escaped.replace(u'"', QStringLiteral("&quot;"));
    return escaped;
}

QString escapedAttribute(const QString& text) {
    return escapedHTML(text).replace(u'\'', QStringLiteral("&#39;"));
}

QString printDocument(const QString& title, const QString& body, const QString& css) {
    const QString shownTitle = escapedHTML(title);
    return QStringLiteral("<!doctype html><html lang='pt-BR'><meta charset='utf-8'><title>") + shownTitle +
           QStringLiteral(
               "</title><style>@page{size:A4;margin:10mm}*{box-sizing:border-box}body{font:12px "
               "monospace;background:white;color:black}main{display:flex;flex-wrap:wrap;gap:3mm}.label{border:0.2mm "
               "dashed #777;padding:1mm;break-inside:avoid;overflow:hidden}.name{font-size:9px;white-space:nowrap;"
               "overflow:hidden;text-overflow:ellipsis;margin:0}.code{font-size:10px;margin:0}.toolbar{margin:0 0 "
               "10px;padding:10px;background:#eee}button{font:inherit;padding:8px}.ruler{width:50mm;border-top:1mm "
               "solid black;margin:8mm 0 0}@media print{.toolbar{display:none}body{margin:0}}") +
           css + QStringLiteral("</style><div class='toolbar'><b>") + shownTitle +
           QStringLiteral("</b><p>Imprima em TAMANHO REAL / 100%. Desative ajustar à página e cabeçalhos/rodapés. A "
                          "linha de conferência deve medir 50 mm.</p><button onclick='window.print()'>IMPRIMIR / "
                          "SALVAR PDF</button></div><main>") +
           body + QStringLiteral("</main><div class='ruler'>50 mm — confira com régua</div></html>");
}

QString realNumberText(double value) {
    if (!std::isfinite(value))
        return QString::number(value);
    // 'g' alone would write 100000 as 1e+05; keep plain decimals in the range
    // where the usual shortest-form writers do.
    const double magnitude = std::fabs(value);
    const bool plain = magnitude == 0.0 || (magnitude >= 1e-4 && magnitude < 1e16);
    QString text = QString::number(value, plain ? 'f' : 'g', QLocale::FloatingPointShortest);
    if (!text.contains(u'.') && !text.contains(u'e'))
        text += QStringLiteral(".0");
    return text;
}

qsizetype graphemeLength(const QString& text) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() != -1)
        ++count;
    return count;
}

QString shownShopName(const std::optional<QString>& locadoraName) {
    return locadoraName.value_or(QStringLiteral("LOCADORA"));
}
