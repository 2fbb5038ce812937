#include "look/SplashView.h"

#include "ProgramInfo.h"
#include "look/DOS.h"
#include "look/DOSButton.h"
#include "look/PixelTitle.h"
#include "look/TapeLogo.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace {

QLabel* centredLabel(const QString& text, qreal size, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setFont(DOS::font(size));
    label->setAlignment(Qt::AlignCenter);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, DOS::text());
    label->setPalette(palette);
    return label;
}

} // namespace

SplashView::SplashView(QWidget* parent)
    : QWidget(parent), m_content(new QWidget(this)), m_logo(new TapeLogo(m_content)),
      m_title(new PixelTitle(m_content)), m_enter(new DOSButton(QStringLiteral("[ENTER] INICIAR"), m_content)) {
    setFocusPolicy(Qt::StrongFocus);

    auto* stack = new QVBoxLayout(m_content);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(24);

    m_logo->setFixedSize(110, 68);
    stack->addWidget(m_logo, 0, Qt::AlignHCenter);

    // With the spacing on both sides the logo and the title end up 72 pixels apart.
    auto* gap = new QWidget(m_content);
    gap->setFixedSize(1, 24);
    stack->addWidget(gap, 0, Qt::AlignHCenter);

    // No alignment: the title takes the stack's whole width.
    m_title->setFixedHeight(128);
    stack->addWidget(m_title);

    stack->addWidget(centredLabel(tagline(), 20, m_content), 0, Qt::AlignHCenter);
    stack->addWidget(centredLabel(notice(), 14, m_content), 0, Qt::AlignHCenter);

    m_enter->setCentersTitle(true);
    m_enter->setFixedSize(220, 36);
    stack->addWidget(m_enter, 0, Qt::AlignHCenter);
    connect(m_enter, &QPushButton::clicked, this, &SplashView::entered);
}

QString SplashView::tagline() {
    return QStringLiteral("SUA COLEÇÃO VHS • LOCADORA VIRTUAL");
}

QString SplashView::notice() {
    return QStringLiteral("CINEFITA VERSÃO " CINEFITA_VERSION " • (C) COPYRIGHT 1994 • TODOS OS DIREITOS RESERVADOS");
}

void SplashView::setBorderWidth(int width) {
    m_borderWidth = qMax(0, width);
    update();
}

bool SplashView::event(QEvent* event) {
    // The stack asks for a new size when an item is shown or hidden.
    if (event->type() == QEvent::LayoutRequest)
        placeContent();
    return QWidget::event(event);
}

void SplashView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placeContent();
}

void SplashView::placeContent() {
    const QSize wanted = m_content->sizeHint();
    const int w = qMin(wanted.width(), qMax(0, width() - 2 * m_borderWidth));
    const int h = m_content->layout()->hasHeightForWidth() ? m_content->layout()->heightForWidth(w) : wanted.height();
    // Centred across, and with its middle at 0.84 of the way down to the view's middle.
    const int left = (width() - w) / 2;
    const int top = qMax(0, qRound(0.84 * height() / 2.0 - h / 2.0));
    m_content->setGeometry(left, top, w, h);
}

void SplashView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(rect(), DOS::blue());
    const int b = qMin(m_borderWidth, qMin(width(), height()) / 2);
    if (b <= 0)
        return;
    painter.fillRect(QRect(0, 0, width(), b), DOS::border());
    painter.fillRect(QRect(0, height() - b, width(), b), DOS::border());
    painter.fillRect(QRect(0, b, b, height() - 2 * b), DOS::border());
    painter.fillRect(QRect(width() - b, b, b, height() - 2 * b), DOS::border());
}
