#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

class DOSButton;
class DOSPopup;
class QWidget;
class ScreenHost;

// The list screens of sections 1 to 6: the controls that narrow the one shared
// table (order, genre), the table itself, which the host places, and the action
// row of the section. The order and the genre chosen are the controller's state,
// so they survive a redraw; the commands on rows stay the controller's.
class ListScreen : public QObject {
    Q_OBJECT
public:
    using Action = std::function<void()>;
    struct Commands {
        Action create, importCSV, exportCSV, select, edit, remove, printReport, rentalDetails, returnRental, cashEntry,
            overdueNotices, cashClosing;
        Action adjustedReturn; // the returns list's other return: another instant, a fine forgiven
    };
    struct State {
        bool& alphabeticalFilms;
        bool& alphabeticalClients;
        std::optional<QString>& selectedGenre;
        bool onlyLate = false; // the rented list shows the late rentals only
    };

    ListScreen(ScreenHost& host, int section, State state, const Commands& commands, QObject* parent);

    DOSButton* createButton() const { return m_create; }
    DOSButton* sortButton() const { return m_sort; }
    DOSButton* importButton() const { return m_import; }
    DOSPopup* genrePopup() const { return m_genres; }

private:
    void addGenreFilter();
    void toggleOrder();
    void changeGenre();

    ScreenHost& m_host;
    int m_section;
    State m_state;
    DOSButton* m_create = nullptr;
    DOSButton* m_sort = nullptr;
    DOSButton* m_import = nullptr;
    DOSPopup* m_genres = nullptr;
};
