// Renders the look into PNGs for a person to inspect: the splash screen as the
// program opens, and a panel of the drawn controls. Written to the folder given as
// the first argument (default: the current directory); run on the offscreen platform
// it needs no display.
#include "look/CRTOverlay.h"
#include "look/DOS.h"
#include "look/DOSButton.h"
#include "look/DOSField.h"
#include "look/DOSPopup.h"
#include "look/DOSSearchField.h"
#include "look/DOSStyle.h"
#include "look/DOSTable.h"
#include "look/SplashView.h"

#include <QApplication>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStandardItemModel>
#include <QVBoxLayout>
#include <QtTest>
#include <cstdio>

namespace {

// A screen whose children are covered by the scan lines, as in the program's window.
class Screen : public QWidget {
public:
    Screen() {
        setAutoFillBackground(true);
        QPalette palette = this->palette();
        palette.setColor(QPalette::Window, DOS::blue());
        setPalette(palette);
    }
    void cover() {
        m_overlay = new CRTOverlay(this);
        m_overlay->setGeometry(rect());
        m_overlay->raise();
        m_overlay->show();
    }

protected:
    void resizeEvent(QResizeEvent*) override {
        if (m_overlay)
            m_overlay->setGeometry(rect());
    }

private:
    CRTOverlay* m_overlay = nullptr;
};

DOSButton* menuButton(const QString& title, QWidget* parent) {
    auto* button = new DOSButton(title, parent);
    if (title.startsWith('[') && title.contains(']'))
        button->setShortcutRange(std::pair(0, int(title.indexOf(']')) + 1));
    button->setFixedSize(220, 34);
    return button;
}

QLabel* label(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setFont(DOS::font(14));
    return label;
}

QImage splash() {
    Screen screen;
    screen.resize(1260, 850);
    auto* splash = new SplashView(&screen);
    splash->setGeometry(screen.rect());
    screen.cover();
    screen.show();
    if (!QTest::qWaitForWindowExposed(&screen))
        return {};
    return screen.grab().toImage();
}

QImage controls() {
    Screen screen;
    auto* rows = new QVBoxLayout(&screen);
    rows->setContentsMargins(20, 20, 20, 20);
    rows->setSpacing(16);

    auto* search = new DOSSearchField(&screen);
    search->setText("de volta");
    search->setFixedHeight(32);
    rows->addWidget(search);

    auto* content = new QHBoxLayout;
    content->setSpacing(18);
    auto* menu = new QVBoxLayout;
    menu->setSpacing(3);
    auto* heading = menuButton("MENU PRINCIPAL", &screen);
    menu->addWidget(heading);
    const QStringList titles{"[F1] CADASTRAR FITA", "[F2] CLIENTES",   "[F3] ALUGAR",          "[F4] LISTA DE FILMES",
                             "[F5] LOCADOS",        "[F6] RELATÓRIOS", "[F7] SUGESTÃO DA CASA"};
    for (const QString& title : titles) {
        auto* button = menuButton(title, &screen);
        button->setOn(title == "[F3] ALUGAR");
        button->setDown(title == "[F5] LOCADOS");
        menu->addWidget(button);
    }
    menu->addStretch();
    content->addLayout(menu);

    auto* body = new QVBoxLayout;
    body->setSpacing(12);
    auto* tools = new QHBoxLayout;
    tools->setSpacing(16);
    auto* sort = new DOSButton("ORDEM: A–Z", &screen);
    sort->setFixedSize(190, 34);
    tools->addWidget(sort);
    auto* settings = new DOSButton("[ALTERAR]", &screen);
    settings->setShortcutRange(std::pair(0, 9));
    settings->setDrawsDOSBorder(false);
    settings->setFixedSize(140, 34);
    tools->addWidget(settings);
    tools->addWidget(label("GÊNERO", &screen));
    auto* genres = new DOSPopup(&screen);
    genres->addItems({"TODOS OS GÊNEROS", "AÇÃO", "FICÇÃO CIENTÍFICA"});
    genres->setFixedWidth(260);
    tools->addWidget(genres);
    tools->addStretch();
    body->addLayout(tools);

    auto* fields = new QHBoxLayout;
    fields->setSpacing(12);
    auto* title = new DOSField("DE VOLTA PARA O FUTURO", &screen);
    title->setFixedHeight(42);
    fields->addWidget(title, 2);
    auto* year = new DOSField("1985", &screen);
    year->setFixedHeight(42);
    fields->addWidget(year, 1);
    body->addLayout(fields);

    QStandardItemModel model(0, 3);
    model.setHorizontalHeaderLabels({"CÓDIGO", "FILME", "SITUAÇÃO"});
    const QList<QStringList> films{{"COD-0001", "DE VOLTA PARA O FUTURO", "LOCADO"},
                                   {"COD-0002", "O EXTERMINADOR DO FUTURO", "ATENÇÃO: CLIENTE EM DÉBITO"},
                                   {"COD-0003", "OS CAÇA-FANTASMAS", "LOCADO"},
                                   {"COD-0004", "CURTINDO A VIDA ADOIDADO", "LOCADO"},
                                   {"COD-0005", "OS GOONIES", "LOCADO"},
                                   {"COD-0006", "CONTATOS IMEDIATOS DO TERCEIRO GRAU", "LOCADO"},
                                   {"COD-0007", "A HISTÓRIA SEM FIM", "ATENÇÃO: CLIENTE EM DÉBITO"},
                                   {"COD-0008", "GREMLINS", "LOCADO"},
                                   {"COD-0009", "KARATÊ KID", "LOCADO"},
                                   {"COD-0010", "ALIEN, O OITAVO PASSAGEIRO", "LOCADO"}};
    for (const QStringList& film : films) {
        QList<QStandardItem*> cells;
        for (const QString& text : film)
            cells << new QStandardItem(text);
        model.appendRow(cells);
    }
    auto* table = new DOSTable(&screen);
    table->setModel(&model);
    table->setColumnWidth(0, 120);
    table->setColumnWidth(1, 340);
    table->setColumnWidth(2, 300);
    table->setMinimumHeight(220);
    table->selectRow(1);
    body->addWidget(table, 1);

    auto* actions = new QHBoxLayout;
    actions->setSpacing(14);
    actions->addStretch();
    for (const QString& text : {QString("BAIXAR ARQUIVO CSV"), QString("EDITAR"), QString("SELECIONAR")}) {
        auto* button = new DOSButton(text, &screen);
        button->setNormalColor(DOS::ink());
        button->setCentersTitle(true);
        button->setFixedSize(qMax(130, 9 * int(text.size()) + 22), 34);
        actions->addWidget(button);
    }
    body->addLayout(actions);
    content->addLayout(body, 1);
    rows->addLayout(content, 1);

    // The dialog's icon beside a long text that needs its scroller.
    auto* dialog = new QHBoxLayout;
    dialog->setSpacing(20);
    auto* icon = new QLabel(&screen);
    if (const std::optional<QImage> strokes = DOS::dialogIcon())
        icon->setPixmap(QPixmap::fromImage(DOS::fittedStrokes(*strokes, 64)));
    dialog->addWidget(icon, 0, Qt::AlignTop);
    auto* text = new QPlainTextEdit(&screen);
    text->setFont(DOS::font(16));
    QPalette ground = text->palette();
    ground.setColor(QPalette::Base, DOS::ink());
    text->setPalette(ground);
    QStringList lines;
    for (int line = 1; line <= 12; ++line)
        lines << QString("LINHA %1 DE UM TEXTO LONGO QUE PRECISA DE BARRA DE ROLAGEM").arg(line);
    text->setPlainText(lines.join('\n'));
    text->setFixedSize(500, 120);
    dialog->addWidget(text);
    dialog->addStretch();
    rows->addLayout(dialog);

    screen.resize(1260, 720);
    screen.cover();
    screen.show();
    screen.activateWindow();
    if (!QTest::qWaitForWindowActive(&screen))
        return {};
    title->setFocus();
    title->setCursorPosition(8);
    return screen.grab().toImage();
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    DOS::registerFont();
    if (!DOS::fontRegistered())
        std::fprintf(stderr, "warning: pixel font not registered, drawing with the fallback\n");
    QApplication::setStyle(new DOSStyle);
    const QDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QDir::currentPath());
    if (!folder.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "cannot create %s\n", qPrintable(folder.path()));
        return 1;
    }
    const struct {
        const char* name;
        QImage (*draw)();
    } pictures[] = {{"cinefita-splash.png", splash}, {"cinefita-controls.png", controls}};
    for (const auto& picture : pictures) {
        const QString path = folder.filePath(QString::fromLatin1(picture.name));
        if (!picture.draw().save(path)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
            return 1;
        }
        std::printf("%s\n", qPrintable(path));
    }
    return 0;
}
