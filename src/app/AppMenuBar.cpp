#include "app/App.h"

#include "app/ShellViews.h"
#include "look/DOS.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <functional>

// The window's menu bar: the program's commands and the editing keys, which act on
// whatever text has the focus.

namespace {

enum EditCommand { cutText, copyText, pasteText, selectAllText };

} // namespace

void App::buildMenuBar() {
    auto* bar = new QMenuBar;
    QMenu* program = bar->addMenu(QStringLiteral("CINEFITA"));
    auto item = [this](QMenu* menu, const QString& title, QKeySequence keys, Action action) {
        QAction* added = menu->addAction(title);
        added->setShortcut(keys);
        connect(added, &QAction::triggered, this, [action] { action(); });
    };
    item(program, QStringLiteral("Nome da locadora…"), QKeySequence(Qt::CTRL | Qt::Key_Comma),
         std::bind_front(&App::configureName, this));
    item(program, QStringLiteral("Exportar tela CSV"), QKeySequence(Qt::CTRL | Qt::Key_E),
         std::bind_front(&App::exportCSV, this));
    item(program, QStringLiteral("Backup"), QKeySequence(Qt::CTRL | Qt::Key_B), std::bind_front(&App::backup, this));
    item(program, QStringLiteral("Caixa"), QKeySequence(Qt::CTRL | Qt::Key_K), std::bind_front(&App::showCash, this));
    item(program, QStringLiteral("Restaurar cadastro apagado…"), QKeySequence(),
         std::bind_front(&App::restoreRecord, this));
    item(program, QStringLiteral("Restaurar backup…"), QKeySequence(Qt::CTRL | Qt::Key_R),
         std::bind_front(&App::restoreBackup, this));
    item(program, QStringLiteral("Sair do CINEFITA"), QKeySequence(Qt::CTRL | Qt::Key_Q),
         [this] { seams.terminate(); });

    QMenu* edit = bar->addMenu(QStringLiteral("Editar"));
    item(edit, QStringLiteral("Recortar"), QKeySequence(Qt::CTRL | Qt::Key_X), [this] { editText(cutText); });
    item(edit, QStringLiteral("Copiar"), QKeySequence(Qt::CTRL | Qt::Key_C), [this] { editText(copyText); });
    item(edit, QStringLiteral("Colar"), QKeySequence(Qt::CTRL | Qt::Key_V), [this] { editText(pasteText); });
    item(edit, QStringLiteral("Selecionar tudo"), QKeySequence(Qt::CTRL | Qt::Key_A),
         [this] { editText(selectAllText); });

    bar->setFont(DOS::font(14));
    QPalette colours = bar->palette();
    colours.setColor(QPalette::Window, DOS::ink());
    colours.setColor(QPalette::Button, DOS::ink());
    colours.setColor(QPalette::WindowText, DOS::text());
    colours.setColor(QPalette::ButtonText, DOS::text());
    bar->setPalette(colours);

    window = new MainWindow(*this);
    window->setMenuBar(bar);
}

void App::editText(int command) {
    QWidget* focused = QApplication::focusWidget();
    auto act = [command](auto* text) {
        const bool editable = !text->isReadOnly();
        if (command == copyText)
            text->copy();
        else if (command == cutText && editable)
            text->cut();
        else if (command == pasteText && editable)
            text->paste();
        else if (command == selectAllText)
            text->selectAll();
    };
    if (auto* line = qobject_cast<QLineEdit*>(focused))
        act(line);
    else if (auto* plain = qobject_cast<QPlainTextEdit*>(focused))
        act(plain);
    else if (auto* rich = qobject_cast<QTextEdit*>(focused))
        act(rich);
}
