#include "app/ShellViews.h"

#include "app/App.h"
#include "look/CRTOverlay.h"
#include "look/DOS.h"

#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTextEdit>

void MainWindow::closeEvent(QCloseEvent* event) {
    if (m_app.windowShouldClose(this))
        QMainWindow::closeEvent(event);
    else
        event->ignore();
}

void WorkingScreen::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), DOS::blue());
    if (m_shadowed != nullptr && m_shadowed->isVisible())
        painter.fillRect(m_shadowed->geometry().translated(7, 7), QColor(0, 0, 0, 204));
}

void WorkingScreen::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    for (CRTOverlay* overlay : findChildren<CRTOverlay*>(QString(), Qt::FindDirectChildrenOnly))
        overlay->setGeometry(rect());
}

bool PanelDecoration::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        auto* view = static_cast<QWidget*>(watched);
        QPainter painter(view);
        painter.fillRect(view->rect(), DOS::blue());
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(DOS::border(), 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(view->rect()).adjusted(0.75, 0.75, -0.75, -0.75));
    }
    return false;
}
