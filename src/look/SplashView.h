#pragma once

#include <QWidget>

class DOSButton;
class PixelTitle;
class QLabel;
class TapeLogo;

// The start screen: the drawn tape, the brand word in big pixels, a tagline, a
// period notice and the "[ENTER] INICIAR" button, stacked and centred a little
// above the middle of a navy panel with a green border. Keys are left to the shell.
class SplashView : public QWidget {
    Q_OBJECT

public:
    explicit SplashView(QWidget* parent = nullptr);

    DOSButton* enterButton() const { return m_enter; }
    QWidget* content() const { return m_content; }
    TapeLogo* logo() const { return m_logo; }
    PixelTitle* title() const { return m_title; }

    int borderWidth() const { return m_borderWidth; }
    void setBorderWidth(int width);

    static QString tagline();
    static QString notice();

signals:
    void entered();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void placeContent();

    QWidget* m_content;
    TapeLogo* m_logo;
    PixelTitle* m_title;
    DOSButton* m_enter;
    int m_borderWidth = 3;
};
