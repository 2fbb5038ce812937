#pragma once

#include "counter/Basket.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <optional>

struct Customer;
class DOSButton;
struct Film;
class MatchList;
class QLabel;
class QLineEdit;
class QWidget;
class RecordForm;
class ScreenHost;

// The rental screen: a film and a customer picked through their fields and the
// drop-down lists under them, then one rental of one numbered copy saved. It owns
// its form and lists and lives as long as its form; the chosen film and customer
// are the controller's, so they survive a redraw. A second tape, scanned or typed
// as a copy code and entered with Return, starts a list of tapes under the form that
// SALVAR rents in one go. Its members live by job in RentalScreen.cpp (the form and
// a rental of one tape), RentalScreenTyping.cpp (what typing chooses, and what a scan
// typed into the fields must not leave behind) and RentalScreenTapes.cpp (the tapes).
class RentalScreen : public QObject {
    Q_OBJECT
public:
    // The rental fields are known by these tags, kept in the "tag" property.
    enum FieldTag : int {
        filmCodeTag = 801,
        filmTitleTag = 802,
        customerNameTag = 803,
        customerCodeTag = 804,
        rentalStartTag = 805,
    };
    static int fieldTag(const QWidget* view);

    // Builds the form and its action row into the host's body.
    RentalScreen(ScreenHost& host, std::optional<QString>& rentalFilm, std::optional<QString>& rentalCustomer,
                 QList<BasketTape>& rentalTapes);

    RecordForm* formView() const { return m_form; }
    MatchList* filmMatches() const { return m_filmMatches; }
    MatchList* clientMatches() const { return m_clientMatches; }
    QWidget* basketList() const; // the tapes of this rental, shown from two on

    // A tape (or a film, copy empty) brought by the scanner: chosen, or added to the
    // list when another is chosen already; then the focus goes to whatever is missing.
    void takeTape(const Film& film, std::optional<qint64> copy);
    // A member card: this customer chosen, the focus on CÓDIGO for the tapes.
    void chooseCustomer(const Customer& customer);

    // What typing may change on the screen, to be put back when the keys were a scan's.
    struct Typed {
        QMap<QString, QString> texts;
        std::optional<QString> film, customer;
        std::optional<BasketTape> dropped;
        bool typedChoice = false;
        bool filmListShown = false, clientListShown = false;
    };
    Typed typed() const;
    void restore(const Typed& typed);

    bool eventFilter(QObject* watched, QEvent* event) override; // Delete in the list of tapes

    void controlTextDidChange(QLineEdit* field); // the operator's edits only
    void updateRentalDue();
    void clearRental();
    void finalizeRental();

private:
    std::optional<Film> storedFilm(const QString& id) const;
    std::optional<Customer> storedCustomer(const QString& id) const;
    void setField(const QString& key, const QString& text);
    void setCode(const QString& text);
    void commitRented(const Store& before, const Ruled<Store>& rented);
    void chooseTyped();
    void codeEntered();
    void chooseTape(const BasketTape& tape);
    void afterTape();
    void addTape(const BasketTape& chosenBefore, const BasketTape& tape);
    void showTapes();
    void removeSelectedTape();
    void finalizeTapes(const QString& customerID);
    DOSButton* saveButton() const;

    ScreenHost& m_host;
    std::optional<QString>& m_film;
    std::optional<QString>& m_customer;
    RecordForm* m_form = nullptr;
    MatchList* m_filmMatches = nullptr;
    MatchList* m_clientMatches = nullptr;
    QList<BasketTape>& m_tapes;          // two or more: the rental is of these tapes
    std::optional<BasketTape> m_dropped; // the tape chosen before CÓDIGO was typed over
    QString m_codeShown;                 // CÓDIGO as it was before the latest edit
    bool m_typedChoice = false;          // the film was chosen by typing its code
    MatchList* m_basket = nullptr;
    QLabel* m_basketTotal = nullptr;
};
