#pragma once

#include "widgets/TextLook.h"

#include <QMainWindow>

class App;

// Small pieces of the working screen shared by the shell's files.

// Closing the main window ends the program; the controller decides first.
class MainWindow : public QMainWindow {
public:
    explicit MainWindow(App& app) : m_app(app) {}

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    App& m_app;
};

// The working screen: navy ground, the menu panel's hard shadow, and the scan-line
// overlay kept over everything at the full size.
class WorkingScreen : public QWidget {
public:
    void setShadowed(QWidget* panel) { m_shadowed = panel; }

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* m_shadowed = nullptr;
};

// Panel look given to any view: navy fill and a 1.5-pixel green frame, drawn
// before the view's own painting.
class PanelDecoration : public QObject {
public:
    explicit PanelDecoration(QWidget* view) : QObject(view) { view->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override;
};
