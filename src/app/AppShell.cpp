#include "app/App.h"

#include "app/ShellViews.h"
#include "look/DOS.h"
#include "look/DOSButton.h"
#include "look/DOSSearchField.h"
#include "look/DOSStyle.h"
#include "look/DOSTable.h"
#include "look/SplashView.h"
#include "records/FilmCSVError.h"
#include "records/RentalRules.h"
#include "records/StoreJSON.h"
#include "storage/LocalDatabase.h"
#include "storage/StartupLoading.h"
#include "widgets/ElidingLabel.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRandomGenerator>
#include <QScreen>
#include <QStackedWidget>
#include <QTextEdit>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

constexpr int contentWidth = 1260;
constexpr int contentHeight = 850;
constexpr int minimumContentWidth = 1080;
constexpr int minimumContentHeight = 760;
constexpr int blinkMilliseconds = 600;

} // namespace

App::App(QStringList arguments, QObject* parent)
    : QObject(parent), folder(dataFolderPath()), arguments(std::move(arguments)) {
    DOS::registerFont(); // before any view is made
    body = new QWidget;
    auto* stack = new QVBoxLayout(body);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(16);
    stack->setAlignment(Qt::AlignTop);
    brand = new ElidingLabel;
    status = new QLabel;
    search = new DOSSearchField;
    table = new DOSTable;

    seams.clock = [] {
        return Instant::now();
    };
    seams.chooseOpenFile = [this](const QString& caption, const QString& filter) {
        const QString path = QFileDialog::getOpenFileName(window, caption, QString(), filter);
        reactivateWindow();
        return path;
    };
    seams.chooseSaveFile = [this](const QString& caption, const QString& proposedName, const QString& filter) {
        const QString path = QFileDialog::getSaveFileName(window, caption, proposedName, filter);
        reactivateWindow();
        return path;
    };
    seams.openPrintPage = [](const QString& path) {
        std::printf("%s\n", QDir::toNativeSeparators(path).toLocal8Bit().constData());
        std::fflush(stdout);
        QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    };
    seams.randomIndex = [](qsizetype count) {
        return qsizetype(QRandomGenerator::global()->bounded(qint64(count)));
    };
    seams.terminate = [] {
        QCoreApplication::quit();
    };
}

App::~App() {
    if (blinkTimer != nullptr)
        blinkTimer->stop();
    delete window;
    // Views made with the controller but never placed in the window (or taken out of it).
    for (QWidget* view : std::initializer_list<QWidget*>{body, brand, status, search, table})
        if (view != nullptr && view->parent() == nullptr)
            delete view;
}

// ---- Launch -----------------------------------------------------------------

void App::launch() {
    if (qobject_cast<DOSStyle*>(QApplication::style()) == nullptr)
        QApplication::setStyle(new DOSStyle);

    try {
        LoadedStore loaded = loadAtStartup(folder);
        database = std::move(loaded.database);
        store = std::move(loaded.store);
    } catch (const FilmCSVError& error) {
        alert(QStringLiteral("Dados indisponíveis"), error.description());
        seams.terminate();
        return;
    } catch (const std::exception& error) {
        alert(QStringLiteral("Dados indisponíveis"), QString::fromUtf8(error.what()));
        seams.terminate();
        return;
    }

    buildMenuBar();
    buildWindow();
    buildWorkingView();

    blinkTimer = new QTimer(this);
    blinkTimer->setInterval(blinkMilliseconds);
    connect(blinkTimer, &QTimer::timeout, this, &App::updateDebtAlert);
    blinkTimer->start();

    QPalette tableColours = table->palette();
    tableColours.setColor(QPalette::Base, DOS::blue());
    table->setPalette(tableColours);
    qApp->installEventFilter(this);
    installScanFilter();
    observeEditing();
    render();
    showSplash();
    if (arguments.contains(QStringLiteral("--preview")))
        schedulePreview();
}

void App::buildWindow() {
    Q_ASSERT(window != nullptr);
    window->setWindowTitle(QStringLiteral("CINEFITA — ") + locadoraName());
    content = new QStackedWidget;
    content->setMinimumSize(minimumContentWidth, minimumContentHeight);
    window->setCentralWidget(content);
    // The menu bar sits inside the window on this desktop; the content keeps its size below it.
    const int menuHeight = window->menuBar()->sizeHint().height();
    window->resize(contentWidth, contentHeight + menuHeight);
    if (QScreen* screen = QGuiApplication::primaryScreen()) {
        QRect frame(QPoint(), window->size());
        frame.moveCenter(screen->availableGeometry().center());
        window->move(frame.topLeft());
    }
    if (!seams.windowOnScreen)
        window->setAttribute(Qt::WA_DontShowOnScreen);
}

void App::buildWorkingView() {
    auto* working = new WorkingScreen;
    workingView = working;
    auto* rows = new QVBoxLayout(working);
    rows->setSpacing(12);
    rows->setContentsMargins(20, 20, 20, 18);

    rows->addWidget(label(SplashView::notice(), 12));

    auto* header = new QHBoxLayout;
    header->setSpacing(8);
    styleLabel(brand, 32);
    settingsButton = button(QStringLiteral("[ALTERAR]"), std::bind_front(&App::configureName, this));
    settingsButton->setFixedWidth(140);
    settingsButton->setDrawsDOSBorder(false);
    settingsButton->setAccessibleName(QStringLiteral("Alterar nome da locadora"));
    header->addWidget(brand);
    header->addWidget(settingsButton);
    header->addStretch(1);
    rows->addLayout(header);

    search->setFixedHeight(32);
    search->setFont(DOS::font(16));
    search->setPlaceholderText(QString());
    search->setAccessibleName(QStringLiteral("Pesquisar registros da tela atual"));
    search->setEnabled(true);
    search->setReadOnly(false);
    setForeground(search, QPalette::Text, DOS::text());
    QPalette searchColours = search->palette();
    searchColours.setColor(QPalette::Base, DOS::ink());
    search->setPalette(searchColours);
    // Only the operator's typing searches; texts the program sets do not.
    connect(search, &QLineEdit::textEdited, this, [this] { searchChanged(); });
    rows->addWidget(search);

    auto* contentRow = new QHBoxLayout;
    contentRow->setSpacing(18);

    auto* menuPanel = new QWidget;
    decorate(menuPanel);
    menuPanel->setFixedWidth(240);
    auto* menu = new QVBoxLayout(menuPanel);
    menu->setSpacing(3);
    menu->setContentsMargins(10, 16, 10, 16);
    menuHeading = button(QStringLiteral("MENU PRINCIPAL"), std::bind_front(&App::showHome, this));
    menuHeading->setFixedWidth(220);
    menu->addWidget(menuHeading, 0, Qt::AlignLeft);
    const QList<QPair<QString, int>> entries = {
        {QStringLiteral("[F1] CADASTRAR FITA"), MenuCommand::newFilm},
        {QStringLiteral("[F2] CLIENTES"), Section::customers},
        {QStringLiteral("[F3] ALUGAR"), Section::rental},
        {QStringLiteral("[F4] LISTA DE FILMES"), Section::films},
        {QStringLiteral("[F5] LOCADOS"), Section::rented},
        {QStringLiteral("[F6] RELATÓRIOS"), Section::reports},
        {QStringLiteral("[F7] SUGESTÃO DA CASA"), MenuCommand::suggestion},
    };
    for (const auto& [title, tag] : entries) {
        DOSButton* entry = button(title, {});
        entry->setTag(tag);
        entry->setFixedWidth(220);
        entry->setDrawsDOSBorder(true);
        entry->setShowsFocusOutline(false);
        connect(entry, &QPushButton::clicked, this, [this, entry] { changeSection(entry); });
        menu->addWidget(entry, 0, Qt::AlignLeft);
        navButtons.append(entry);
    }
    menu->addWidget(new QWidget, 1);
    working->setShadowed(menuPanel);
    contentRow->addWidget(menuPanel);

    auto* bodyPanel = new QWidget;
    decorate(bodyPanel);
    bodyPanel->setMinimumHeight(480);
    auto* bodyFrame = new QVBoxLayout(bodyPanel);
    bodyFrame->setContentsMargins(28, 24, 28, 24);
    bodyFrame->setSpacing(0);
    bodyFrame->addWidget(body);
    contentRow->addWidget(bodyPanel, 1);
    rows->addLayout(contentRow, 1);

    auto* footer = new QHBoxLayout;
    footer->setSpacing(12);
    styleLabel(status, 14);
    status->setText(QString());
    footer->addWidget(status, 1);
    for (const auto& [title, action] :
         QList<QPair<QString, Action>>{{QStringLiteral("[F9] AJUDA"), std::bind_front(&App::showHelp, this)},
                                       {QStringLiteral("[ESC] SAIR"), std::bind_front(&App::exitProgram, this)}}) {
        DOSButton* footerButton = button(title, action);
        footerButton->setFixedWidth(140);
        footer->addWidget(footerButton);
        footerButtons.append(footerButton);
    }
    rows->addLayout(footer);
}

void App::showSplash() {
    splash = new SplashView;
    connect(splash, &SplashView::entered, this, [this] { enterProgram(splash); });
    content->addWidget(splash);
    content->addWidget(workingView);
    content->setCurrentWidget(splash);
    window->show();
    window->raise();
    window->activateWindow();
    if (splash->focusPolicy() == Qt::NoFocus)
        splash->setFocusPolicy(Qt::StrongFocus);
    splash->setFocus(Qt::OtherFocusReason);
}
