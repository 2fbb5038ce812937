#include "app/App.h"

#include "app/ShellViews.h"
#include "look/DOS.h"
#include "look/DOSButton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

// The building blocks every screen is made of.

QLabel* App::label(const QString& text, qreal size) {
    auto* made = new QLabel(text);
    styleLabel(made, size);
    return made;
}

DOSButton* App::button(const QString& title, Action action) {
    auto* made = new DOSButton(title);
    made->setFont(DOS::font(14));
    made->setFixedHeight(34);
    made->setFocusPolicy(Qt::StrongFocus);
    made->setAutoDefault(false);
    const qsizetype close = title.indexOf(QLatin1Char(']'));
    if (title.startsWith(QLatin1Char('[')) && close > 0)
        made->setShortcutRange(std::pair<int, int>(0, int(close) + 1));
    if (action)
        connect(made, &QPushButton::clicked, this, [action] { action(); });
    return made;
}

void App::decorate(QWidget* view) {
    if (view->findChild<PanelDecoration*>(QString(), Qt::FindDirectChildrenOnly) == nullptr)
        new PanelDecoration(view);
    view->update();
}

void App::addBody(QWidget* view, int stretch) {
    bodyLayout()->addWidget(view, stretch);
}

void App::spacer() {
    auto* empty = new QWidget;
    empty->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    addBody(empty, 1);
}

void App::actionRow(const QList<QPair<QString, Action>>& items) {
    auto* row = new QWidget;
    auto* buttons = new QHBoxLayout(row);
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->setSpacing(14);
    buttons->addStretch(1);
    for (const auto& [title, action] : items) {
        DOSButton* made = button(title, action);
        made->setNormalColor(DOS::ink());
        made->setMinimumWidth(std::max(130, 9 * int(title.size()) + 22));
        buttons->addWidget(made);
        screen.actionButtons.append(made);
    }
    addBody(row);
}

QString App::locadoraName() const {
    return store.locadoraName.value_or(QStringLiteral("LOCADORA"));
}
