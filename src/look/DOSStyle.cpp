#include "look/DOSStyle.h"

#include "look/DOS.h"
#include "look/DOSCaret.h"

#include <QPainter>
#include <QPolygon>
#include <QStyleFactory>
#include <QStyleOptionSlider>
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

namespace {

// A small solid triangle pointing along the given direction, centred in the box.
void drawArrow(QPainter* painter, const QRect& box, Qt::ArrowType direction) {
    const QPoint c = box.center();
    QPolygon arrow;
    switch (direction) {
    case Qt::UpArrow:
        arrow << QPoint(c.x() - 4, c.y() + 2) << QPoint(c.x() + 4, c.y() + 2) << QPoint(c.x(), c.y() - 2);
        break;
    case Qt::DownArrow:
        arrow << QPoint(c.x() - 4, c.y() - 2) << QPoint(c.x() + 4, c.y() - 2) << QPoint(c.x(), c.y() + 2);
        break;
    case Qt::LeftArrow:
        arrow << QPoint(c.x() + 2, c.y() - 4) << QPoint(c.x() + 2, c.y() + 4) << QPoint(c.x() - 2, c.y());
        break;
    default:
        arrow << QPoint(c.x() - 2, c.y() - 4) << QPoint(c.x() - 2, c.y() + 4) << QPoint(c.x() + 2, c.y());
        break;
    }
    painter->setPen(Qt::NoPen);
    painter->setBrush(DOS::text());
    painter->drawPolygon(arrow);
}

} // namespace

int DOSStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    if (metric == PM_ScrollBarExtent)
        return 16;
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

void DOSStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                  const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || !bar) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    // A flat bar: dark groove, framed arrow cells and a solid light knob, all hard-edged.
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->fillRect(bar->rect, DOS::ink());
    painter->setPen(QPen(DOS::border(), 1));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(bar->rect.adjusted(0, 0, -1, -1));
    const bool horizontal = bar->orientation == Qt::Horizontal;
    const struct {
        SubControl part;
        Qt::ArrowType direction;
    } ends[] = {{SC_ScrollBarSubLine, horizontal ? Qt::LeftArrow : Qt::UpArrow},
                {SC_ScrollBarAddLine, horizontal ? Qt::RightArrow : Qt::DownArrow}};
    for (const auto& end : ends) {
        const QRect box = proxy()->subControlRect(CC_ScrollBar, bar, end.part, widget);
        if (box.isEmpty())
            continue;
        const bool pressed = (bar->activeSubControls & end.part) && (bar->state & State_Sunken);
        painter->fillRect(box, pressed ? DOS::border() : DOS::ink());
        painter->setPen(QPen(DOS::border(), 1));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(box.adjusted(0, 0, -1, -1));
        drawArrow(painter, box, end.direction);
    }
    const QRect knob = proxy()->subControlRect(CC_ScrollBar, bar, SC_ScrollBarSlider, widget);
    if (knob.isValid() && bar->maximum > bar->minimum) {
        // A light knob, so it stands out on the dark groove; it widens while dragged.
        const bool pressed = (bar->activeSubControls & SC_ScrollBarSlider) && (bar->state & State_Sunken);
        const int inset = pressed ? 1 : 3;
        painter->fillRect(knob.adjusted(inset, inset, -inset, -inset), DOS::text());
    }
    painter->restore();
}

QPalette DOSStyle::standardPalette() const {
    return dosPalette();
}

void DOSStyle::polish(QPalette& palette) {
    palette = dosPalette();
}
