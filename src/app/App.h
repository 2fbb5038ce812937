#pragma once

#include "widgets/ModalAlert.h"
#include "lists/ListCache.h"
#include "lists/Sections.h"
#include "records/Instant.h"
#include "records/Records.h"

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
};

// The controller: owns the window, the store in memory, the database and every
// screen. One class; its member functions live in the App*.cpp files by screen.
class App : public QObject {
    Q_OBJECT
public:
    using Action = std::function<void()>;

    explicit App(QStringList arguments = {}, QObject* parent = nullptr);
    ~App() override;

    // ---- Shell (AppShell.cpp, AppNavigation.cpp, AppViews.cpp, AppPreview.cpp) ----
    void launch();
    void enterProgram(QObject* sender = nullptr);
    void navigate(int newSection);
    void changeSection(DOSButton* sender);
    void showHome();
    void showCash();
    void showHelp();
    void showList();
    void render();
    bool commit(const Store& changed);
    QLabel* label(const QString& text, qreal size = 14);
    DOSButton* button(const QString& title, Action action);
    void decorate(QWidget* view);
    void addBody(QWidget* view, int stretch = 0);
    void spacer();
    void actionRow(const QList<QPair<QString, Action>>& items);
    QString locadoraName() const;
    void observeEditing();
    bool windowShouldClose(QWidget* closing);
    void updateDebtAlert();
    QList<QWidget*> bodyViews() const; // what the body shows now, top to bottom
    bool previewPictureWritten() const { return previewWritten; }

    // ---- Dialogs (AppDialogs.cpp) ------------------------------------------
    int styledModal(ModalAlert alert);
    void prepareModalText(ModalAlert& alert);
    void alert(const QString& title, const QString& text);
    std::optional<QStringList> form(const QString& title, const QList<QPair<QString, QString>>& fields,
                                    const QString& ok = QStringLiteral("FINALIZAR"));

    // ---- Focus ring (AppFocus.cpp) -----------------------------------------
    void focus(QWidget* view);
    std::optional<int> focusedIndex(const QList<QWidget*>& controls, QWidget* inWindow) const;
    bool handleKeyboard(QKeyEvent* event, const QList<QWidget*>& controls, QWidget* inWindow);
    QList<QWidget*> mainControls() const; // the main screen's Tab ring

    // ---- Keys (AppKeys.cpp) ------------------------------------------------
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool mainKey(QKeyEvent* event);
    bool shouldFinalizeRecord(const QKeyEvent* event) const;

    // ---- Screens of the other sections (one file each) ---------------------
    void showTable();          // AppLists.cpp
    void addGenreFilter();     // AppLists.cpp
    void toggleOrder();        // AppLists.cpp
    void searchChanged();      // AppLists.cpp
    void showCreate();         // AppLists.cpp
    void selectRecord();       // AppLists.cpp
    void editRecordFromList(); // AppLists.cpp
    void deleteSelected();     // AppRecords.cpp
    void restoreRecord();      // AppRecords.cpp
    void previewFilmForm();    // AppRecords.cpp
    void rentalScreen();       // AppRental.cpp
    void selectRental();       // AppReturns.cpp
    void returnRental();       // AppReturns.cpp
    void cashEntry();          // AppCommands.cpp
    void configureName();      // AppCommands.cpp
    void suggestHouse();       // AppCommands.cpp
    void helpScreen();         // AppCommands.cpp
    void exitProgram();        // AppCommands.cpp
    void exportCSV();          // AppExchange.cpp
    void backup();             // AppExchange.cpp
    void importFilmCSV();      // AppExchange.cpp
    void printReport();        // AppPrint.cpp

    // ---- List screens (AppLists.cpp): the rows of sections 1 to 6 ----------
    QStringList columns() const;
    QList<QStringList> rows(); // also sets filteredIDs
    std::optional<QString> selected();
    std::optional<Film> film(const QString& id) const;
    std::optional<Customer> customer(const QString& id) const;
    void changeGenre();
    void reloadTable(); // clears the selection; the table asks for its rows again
    ListFilter listFilter() const;
    ListCache listCache;
    ListModel* listModel = nullptr;

    // ---- Record screens: forms, printing, CSV and backup -------------------
    // (AppRecords.cpp, AppPrint.cpp, AppExchange.cpp)
    void recordScreen(std::optional<QString> id);
    void enableEdit();
    void saveRecord();
    void openPrint(const QString& html, const QString& name);
    void printLabels();
    std::optional<Customer> memberToPrint() const;
    void printMembers();
    void saveExport(const QString& text, const QString& fileName);

    // ---- Rental screen (AppRental.cpp) ------------------------------------
    // The rental fields are known by these tags, kept in the "tag" property.
    enum RentalFieldTag : int {
        filmCodeTag = 801,
        filmTitleTag = 802,
        customerNameTag = 803,
        customerCodeTag = 804,
        rentalStartTag = 805,
    };
    static int fieldTag(const QWidget* view);
    void controlTextDidChange(QLineEdit* field); // the operator's edits only
    void updateRentalDue();
    void clearRental();
    void finalizeRental();

    // ---- State, in this order ----------------------------------------------
    QMainWindow* window = nullptr;
    Store store;
    int section = Section::rental;
    bool showingSplash = true;
    QWidget* workingView = nullptr;
    DOSButton* menuHeading = nullptr;
    QPointer<QWidget> body;
    QList<DOSButton*> navButtons;
    QList<DOSButton*> footerButtons;
    DOSButton* settingsButton = nullptr;
    QPointer<QLabel> brand;
    QPointer<QLabel> status;
    QPointer<DOSSearchField> search;
    QPointer<DOSTable> table;
    ScreenWidgets screen;
    std::optional<QString> selectedGenre;
    bool alphabeticalFilms = true;
    bool alphabeticalClients = true;
    bool editingEnabled = true;
    std::optional<QString> editID;
    std::optional<QString> rentalFilm;
    std::optional<QString> rentalCustomer;
    bool onlyLate = false;
    QStringList filteredIDs;
    std::optional<QMetaObject::Connection> editingObserver;
    std::unique_ptr<LocalDatabase> database;
    QTimer* blinkTimer = nullptr;
    bool blinkOn = false;
    QString folder;

    // ---- Seams: what tests must not do for real ----------------------------
    std::function<Instant()> clock;
    std::function<QString(const QString& caption, const QString& filter)> chooseOpenFile;
    std::function<QString(const QString& caption, const QString& proposedName, const QString& filter)> chooseSaveFile;
    std::function<void(const QString& path)> openPrintPage;
    std::function<qsizetype(qsizetype count)> randomIndex; // uniform in 0 … count − 1
    std::function<void()> terminate;
    bool windowOnScreen = true; // false: laid out and drawn, never shown (preview)

private:
    void reactivateWindow();
    QVBoxLayout* bodyLayout() const;
    void clearBody();
    void buildMenuBar();
    void buildWindow();
    void buildWorkingView();
    void showSplash();
    void schedulePreview();
    void writePreviewPicture();
    void editText(int command);
    QList<QWidget*> ringControls(bool shownOnlyToo) const;
    QWidget* ringStepFromShownOnly(const QKeyEvent* event) const;

    QStringList arguments;
    QStackedWidget* content = nullptr;
    SplashView* splash = nullptr;
    bool previewWritten = false;
};
