#include "look/DOSButton.h"

#include "look/DOS.h"

#include <QFontMetricsF>
#include <QPainter>

DOSButton::DOSButton(const QString& title, QWidget* parent) : QPushButton(title, parent), m_normalColor(DOS::blue()) {
    setFont(DOS::font(14));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_MacShowFocusRect, false);
}

void DOSButton::setCentersTitle(bool centers) {
    m_centersTitle = centers;
    update();
}

void DOSButton::setDrawsDOSBorder(bool draws) {
    m_drawsDOSBorder = draws;
    update();
}

void DOSButton::setNormalColor(const QColor& colour) {
    m_normalColor = colour;
    update();
}

void DOSButton::setShortcutRange(std::optional<std::pair<int, int>> range) {
    m_shortcutRange = range;
    update();
}

void DOSButton::setOn(bool on) {
    m_on = on;
    update();
}

bool DOSButton::isActive() const {
    return m_on || isDown();
}

QRectF DOSButton::titleRect(const QRectF& frame, const QSizeF& title, bool centred) {
    const qreal x = centred ? frame.center().x() - title.width() / 2 : frame.left() + 10;
    const qreal y = frame.center().y() - title.height() / 2;
    return QRectF(x, y, qMax<qreal>(frame.width() - 20, 0), title.height());
}

QRectF DOSButton::currentTitleRect() const {
    const QFontMetricsF metrics(font());
    return titleRect(QRectF(rect()), QSizeF(metrics.horizontalAdvance(text()), metrics.height()), m_centersTitle);
}

QRectF DOSButton::shortcutBox() const {
    if (!m_shortcutRange)
        return {};
    const QString title = text();
    const int start = qBound(0, m_shortcutRange->first, int(title.size()));
    const int length = qBound(0, m_shortcutRange->second, int(title.size()) - start);
    const QFontMetricsF metrics(font());
    const QRectF area = currentTitleRect();
    const qreal left = area.left() + metrics.horizontalAdvance(title.left(start));
    const qreal width = metrics.horizontalAdvance(title.mid(start, length));
    // The box is clipped with the title, so it never spills out of the title area.
    return QRectF(left, area.top(), width, area.height()).intersected(area);
}

QSize DOSButton::sizeHint() const {
    const QFontMetrics metrics(font());
    return QSize(metrics.horizontalAdvance(text()) + 24, 34);
}

QSize DOSButton::minimumSizeHint() const {
    return QSize(20, 20);
}

void DOSButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const bool active = isActive();
    painter.fillRect(rect(), active ? DOS::border() : m_normalColor);
    const bool outlined = m_showsFocusOutline && hasFocus();
    if (m_drawsDOSBorder || outlined) {
        painter.setPen(QPen(outlined ? DOS::yellow() : DOS::border(), 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }

    const QRectF area = currentTitleRect();
    if (area.width() <= 0)
        return;
    painter.setClipRect(area);
    const QRectF box = shortcutBox();
    if (!box.isEmpty())
        painter.fillRect(box, active ? DOS::ink() : DOS::blue());
    painter.setFont(font());
    painter.setPen(DOS::text());
    const QFontMetricsF metrics(font());
    painter.drawText(QPointF(area.left(), area.top() + metrics.ascent()), text());
}

void DOSButton::setShowsFocusOutline(bool shows) {
    m_showsFocusOutline = shows;
    update();
}

void DOSButton::focusInEvent(QFocusEvent* event) {
    QPushButton::focusInEvent(event);
    update();
}

void DOSButton::focusOutEvent(QFocusEvent* event) {
    QPushButton::focusOutEvent(event);
    update();
}
