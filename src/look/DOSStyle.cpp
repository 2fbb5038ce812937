#include "look/DOSStyle.h"

#include "look/DOS.h"
#include "look/DOSCaret.h"

#include <QStyleFactory>
#include <QWidget>

DOSStyle::DOSStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

QPalette DOSStyle::dosPalette() {
    QPalette palette;
    const auto all = [&palette](QPalette::ColorRole role, const QColor& colour) {
        palette.setColor(QPalette::All, role, colour);
    };
    all(QPalette::Window, DOS::blue());
    all(QPalette::WindowText, DOS::text());
    all(QPalette::Base, DOS::blue());
    all(QPalette::AlternateBase, DOS::blue());
    all(QPalette::Text, DOS::text());
    all(QPalette::PlaceholderText, DOS::border());
    all(QPalette::Button, DOS::blue());
    all(QPalette::ButtonText, DOS::text());
    all(QPalette::BrightText, DOS::yellow());
    all(QPalette::ToolTipBase, DOS::ink());
    all(QPalette::ToolTipText, DOS::text());
    all(QPalette::Light, DOS::border());
    all(QPalette::Midlight, DOS::border());
    all(QPalette::Mid, DOS::border());
    all(QPalette::Dark, DOS::ink());
    all(QPalette::Shadow, Qt::black);
    // Selected text: ink on the phosphor green, as in every field of the program.
    all(QPalette::Highlight, DOS::selection());
    all(QPalette::HighlightedText, DOS::ink());
    all(QPalette::Link, DOS::yellow());
    all(QPalette::LinkVisited, DOS::border());
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, DOS::border());
    return palette;
}

int DOSStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    if (metric == PM_TextCursorWidth) {
        // A block caret, as on a text terminal; fields with a DOSCaret draw it themselves.
        if (widget && widget->property(DOSCaret::propertyName()).toBool())
            return 0;
        return DOSCaret::width;
    }
    return QProxyStyle::pixelMetric(metric, option, widget);
}

int DOSStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                        QStyleHintReturn* returnData) const {
    switch (hint) {
    case SH_Table_GridLineColor:
        return int(DOS::border().rgba());
    case SH_Widget_Animation_Duration:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

void DOSStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    // Focus is shown by the controls' own colours, never by a dotted or glowing ring.
    if (element == PE_FrameFocusRect)
        return;
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

QPalette DOSStyle::standardPalette() const { return dosPalette(); }

void DOSStyle::polish(QPalette& palette) { palette = dosPalette(); }
