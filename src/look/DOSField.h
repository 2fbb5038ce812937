#pragma once

#include <QLineEdit>

class DOSCaret;

// A single-line text field with hard-edged (not antialiased) pixel text, green on
// the darkest ground, framed by a one-pixel line. The block caret comes from DOSStyle.
class DOSField : public QLineEdit {
    Q_OBJECT

public:
    explicit DOSField(QWidget* parent = nullptr);
    explicit DOSField(const QString& text, QWidget* parent = nullptr);

    bool drawsDOSBorder() const { return m_drawsDOSBorder; }
    void setDrawsDOSBorder(bool draws);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void keepHardEdges();

    bool m_drawsDOSBorder = true;
    DOSCaret* m_caret = nullptr;
};
