#pragma once

#include "counter/Basket.h"
#include "counter/ScanTarget.h"
#include "lists/ListCache.h"
#include "lists/Sections.h"
#include "print/Receipt.h"
#include "records/Instant.h"
#include "records/Records.h"
#include "screens/HistoryScreen.h"
#include "screens/ListScreen.h"
#include "screens/RecordScreen.h"
#include "screens/RentalScreen.h"
#include "screens/ScreenHost.h"
#include "widgets/ModalAlert.h"

#include <QList>
#include <QMetaObject>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

class QKeyEvent;
class QLabel;
class QLineEdit;
class QMainWindow;
class QStackedWidget;
class QTimer;
class QVBoxLayout;
class QWidget;

class DOSButton;
class DOSPopup;
class DOSSearchField;
class DOSTable;
class ListModel;
class LocalDatabase;
class MatchList;
class RecordForm;
class ScanFilter;
class SplashView;

// The widgets of the screen on show that the controller keeps a hand on. Every
// render starts from an empty set, so no screen sees another one's widgets.
struct ScreenWidgets {
    QList<DOSButton*> actionButtons; // the action row(s), in order
    QList<DOSButton*> tabs;
    DOSButton* importButton = nullptr;
    DOSButton* createButton = nullptr; // the customer list's CADASTRAR
    DOSPopup* genrePopup = nullptr;
    DOSButton* sortButton = nullptr;
    RecordForm* formView = nullptr;
    MatchList* filmMatches = nullptr;   // rental screen only
    MatchList* clientMatches = nullptr; // rental screen only
    HistoryScreen* history = nullptr;   // a record's history: the list table shows its rows
    QWidget* basketList = nullptr;      // rental screen only: its tapes, shown from two on
};

// What tests and the preview replace: the clock, the file choosers, the print
// page opener, the random pick and the program's end.
struct Seams {
    std::function<Instant()> clock;
    std::function<QString(const QString& caption, const QString& filter)> chooseOpenFile;
    std::function<QString(const QString& caption, const QString& proposedName, const QString& filter)> chooseSaveFile;
    std::function<void(const QString& path)> openPrintPage;
    std::function<qsizetype(qsizetype count)> randomIndex; // uniform in 0 … count − 1
    std::function<void()> terminate;
    bool windowOnScreen = true; // false: laid out and drawn, never shown (preview)
};

// The controller: owns the window, the store in memory and the database, and
// builds the screen on show. Its public side is what the program's modes, the
// window and the tests drive; everything else stays inside.
class App : public QObject, public ScreenHost {
    Q_OBJECT
public:
    explicit App(QStringList arguments = {}, QObject* parent = nullptr);
    ~App() override;

    // ---- Shell --------------------------------------------------------------
    void launch();
    void enterProgram(QObject* sender = nullptr);
    void navigate(int newSection) override;
    void render() override;
    bool commit(const Store& changed) override;
    bool windowShouldClose(QWidget* closing);
    void updateDebtAlert();
    QList<QWidget*> bodyViews() const; // what the body shows now, top to bottom
    bool previewPictureWritten() const { return previewWritten; }

    // ---- Dialogs and the focus ring -----------------------------------------
    int styledModal(ModalAlert alert) override;
    void prepareModalText(ModalAlert& alert);
    void alert(const QString& title, const QString& text) override;
    std::optional<QStringList> form(const QString& title, const QList<QPair<QString, QString>>& fields,
                                    const QString& ok = QStringLiteral("FINALIZAR")) override;
    void focus(QWidget* view) override;
    std::optional<int> focusedIndex(const QList<QWidget*>& controls, QWidget* inWindow) const;
    QList<QWidget*> mainControls() const; // the main screen's Tab ring

    // ---- The operator's commands on the screen on show ----------------------
    QList<QStringList> rows(); // also sets filteredIDs
    std::optional<QString> selected() override;
    std::optional<Customer> customer(const QString& id) const;
    void recordScreen(std::optional<QString> id);
    void historyScreen(const QString& id); // the customer's or film's rentals (section 3 or 4)
    void enableEdit();
    void restoreRecord();
    void controlTextDidChange(QLineEdit* field); // the operator's edits only
    void finalizeRental();
    void returnRental();
    void cashEntry();
    void configureName();
    void suggestHouse();
    void exportCSV();
    void importFilmCSV();
    void restoreBackup();
    void printReport();

    // ---- State --------------------------------------------------------------
    QMainWindow* window = nullptr;
    Store store; // read it; change it only through commit
    int section = Section::rental;
    bool showingSplash = true;
    QWidget* workingView = nullptr;
    DOSButton* menuHeading = nullptr;
    QList<DOSButton*> navButtons;
    QList<DOSButton*> footerButtons;
    QPointer<QLabel> brand;
    QPointer<QLabel> status;
    QPointer<DOSSearchField> search;
    QPointer<DOSTable> table;
    ScreenWidgets screen;
    std::optional<QString> selectedGenre;
    std::optional<QString> editID;
    std::optional<QString> rentalFilm;
    std::optional<QString> rentalCustomer;
    QList<BasketTape> rentalTapes;    // a rental of several tapes; empty for one
    ScanFilter* scanFilter = nullptr; // the barcode scanner's part of the key filter
    QStringList filteredIDs;
    std::unique_ptr<LocalDatabase> database;
    QTimer* blinkTimer = nullptr;
    QString folder;
    Seams seams;

private:
    // ---- Shell (AppShell.cpp, AppNavigation.cpp, AppViews.cpp, AppPreview.cpp) ----
    void changeSection(DOSButton* sender);
    void showHome();
    void showCash();
    void showHelp();
    void showList();
    void leaveHistory(); // AppHistory.cpp
    // What the screens ask of the controller (ScreenHost).
    const Store& shop() const override { return store; }
    Instant now() const override { return seams.clock(); }
    qsizetype pick(qsizetype count) override { return seams.randomIndex(count); }
    QLabel* label(const QString& text, qreal size = 14) override;
    DOSButton* button(const QString& title, Action action) override;
    void addBody(QWidget* view, int stretch = 0) override;
    void spacer() override;
    void actionRow(const QList<QPair<QString, Action>>& items) override;
    void decorate(QWidget* view);
    QString locadoraName() const;
    void observeEditing();
    void reactivateWindow();
    QVBoxLayout* bodyLayout() const;
    void clearBody();
    void clearScreen();
    void buildMenuBar();
    void buildWindow();
    void buildWorkingView();
    void showSplash();
    void schedulePreview();
    void writePreviewPicture();
    void editText(int command);

    // ---- Keys and the focus ring (AppKeys.cpp, AppFocus.cpp) ----------------
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool mainKey(QKeyEvent* event);
    bool shouldFinalizeRecord(const QKeyEvent* event) const;
    void installScanFilter();            // AppCounter.cpp
    void actOnScan(const QString& code); // AppCounter.cpp
    void returnByScan(const ScanReturn& target);
    bool handleKeyboard(QKeyEvent* event, const QList<QWidget*>& controls, QWidget* inWindow);
    QList<QWidget*> ringControls(bool shownOnlyToo) const;
    QWidget* ringStepFromShownOnly(const QKeyEvent* event) const;

    // ---- Screens of the other sections (one file each) ---------------------
    void showTable();          // AppLists.cpp
    void searchChanged();      // AppLists.cpp
    void showCreate();         // AppLists.cpp
    void selectRecord();       // AppLists.cpp
    void editRecordFromList(); // AppLists.cpp
    void deleteSelected();     // AppRecords.cpp
    void previewFilmForm();    // AppRecords.cpp
    void rentalScreen();       // AppRental.cpp
    void selectRental();       // AppReturns.cpp
    void exitProgram();        // AppCommands.cpp
    void backup();             // AppExchange.cpp

    // ---- List screens (AppLists.cpp): the rows of sections 1 to 6 ----------
    QStringList columns() const;
    std::optional<Film> film(const QString& id) const;
    void reloadTable(); // clears the selection; the table asks for its rows again
    ListFilter listFilter() const;

    // ---- Record screens: forms, printing, CSV and backup -------------------
    void saveRecord();
    void openPrint(const QString& html, const QString& name) override;
    void printLabels();
    std::optional<Customer> memberToPrint() const;
    void printMembers();
    void saveExport(const QString& text, const QString& fileName) override;

    // ---- The counter's receipt (AppReceipt.cpp) ------------------------------
    void rememberCounterAct(const CounterAct& act) override;
    void printReceipt();
    std::optional<CounterAct> lastCounterAct; // since the program started

    // ---- Rental screen (AppRental.cpp) ------------------------------------
    void clearSearch() override;
    void showSelected(const QString& id) override;
    void focusList() override;
    void addListTable() override;
    void reloadList() override;
    QPointer<RecordScreen> record; // while a record screen is on show
    QPointer<ListScreen> list;     // while a list screen is on show
    QPointer<RentalScreen> rental; // while the rental screen is on show

    // ---- State the screens keep between renders -----------------------------
    QPointer<QWidget> body;
    DOSButton* settingsButton = nullptr;
    bool alphabeticalFilms = true;
    bool alphabeticalClients = true;
    bool onlyLate = false;
    std::optional<QMetaObject::Connection> editingObserver;
    bool blinkOn = false;
    ListCache listCache;
    ListModel* listModel = nullptr;
    ScanReader scanReader;

    QStringList arguments;
    QStackedWidget* content = nullptr;
    SplashView* splash = nullptr;
    bool previewWritten = false;
};
