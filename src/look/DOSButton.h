#pragma once

#include <QColor>
#include <QPushButton>
#include <optional>
#include <utility>

// A push button drawn as a text-mode cell: a flat fill, a one-pixel frame and the
// title in the pixel font, with the key part of the title (such as "[F3]") on its
// own small box. Behaviour is QPushButton's; only the drawing changes.
class DOSButton : public QPushButton {
    Q_OBJECT

public:
    explicit DOSButton(const QString& title, QWidget* parent = nullptr);

    bool centersTitle() const { return m_centersTitle; }
    void setCentersTitle(bool centers);
    bool drawsDOSBorder() const { return m_drawsDOSBorder; }
    void setDrawsDOSBorder(bool draws);
    QColor normalColor() const { return m_normalColor; }
    void setNormalColor(const QColor& colour);
    // (first character, number of characters) of the key part of the title.
    std::optional<std::pair<int, int>> shortcutRange() const { return m_shortcutRange; }
    void setShortcutRange(std::optional<std::pair<int, int>> range);
    // The "on" state marks the current menu entry; it is not QAbstractButton's checked state.
    bool isOn() const { return m_on; }
    void setOn(bool on);
    int tag() const { return m_tag; }
    void setTag(int tag) { m_tag = tag; }
    // A green frame while the button has the keyboard focus, so Tab shows which
    // button Return or Space will press. The main menu marks its entry with "on" instead.
    bool showsFocusOutline() const { return m_showsFocusOutline; }
    void setShowsFocusOutline(bool shows);

    // Pressed or on.
    bool isActive() const;

    // Where the title of the given size goes in a frame: never narrower than zero.
    static QRectF titleRect(const QRectF& frame, const QSizeF& title, bool centred);
    // The box behind the key part of the title, in widget coordinates; empty without a range.
    QRectF shortcutBox() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    QRectF currentTitleRect() const;

    bool m_centersTitle = false;
    bool m_drawsDOSBorder = true;
    QColor m_normalColor;
    std::optional<std::pair<int, int>> m_shortcutRange;
    bool m_on = false;
    int m_tag = 0;
    bool m_showsFocusOutline = true;
};
