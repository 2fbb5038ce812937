#pragma once

#include <QObject>
#include <QRect>

class QLineEdit;
class QPainter;
class QTimer;

// A blinking block caret in the field's text colour. Qt draws a line edit's caret
// by inverting the pixels beneath, which on the DOS grounds comes out white; fields
// with this caret draw their own instead (DOSStyle gives them a zero-width Qt caret).
// Call paint() at the end of the field's paintEvent.
class DOSCaret : public QObject {
    Q_OBJECT

public:
    static constexpr int width = 3;

    explicit DOSCaret(QLineEdit* field);

    // Readies a frameless line edit on the darkest ground and gives it this caret.
    static DOSCaret* installOn(QLineEdit* field);

    // Fields that carry this property get no caret of Qt's own from DOSStyle.
    static const char* propertyName() { return "dosDrawsOwnCaret"; }

    QRect rect() const;
    bool isShown() const;
    void paint(QPainter& painter) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void restartBlink();
    void blink();

    QLineEdit* m_field;
    QTimer* m_timer;
    bool m_phaseOn = true;
    QRect m_lastRect;
};
