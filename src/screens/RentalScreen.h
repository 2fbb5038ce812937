#pragma once

#include <QObject>
#include <QString>
#include <optional>

class MatchList;
class QLineEdit;
class QWidget;
class RecordForm;
class ScreenHost;

// The rental screen: a film and a customer picked through their fields and the
// drop-down lists under them, then one rental of one numbered copy saved. It owns
// its form and lists and lives as long as its form; the chosen film and customer
// are the controller's, so they survive a redraw.
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
    RentalScreen(ScreenHost& host, std::optional<QString>& rentalFilm, std::optional<QString>& rentalCustomer);

    RecordForm* formView() const { return m_form; }
    MatchList* filmMatches() const { return m_filmMatches; }
    MatchList* clientMatches() const { return m_clientMatches; }

    void controlTextDidChange(QLineEdit* field); // the operator's edits only
    void updateRentalDue();
    void clearRental();
    void finalizeRental();

private:
    ScreenHost& m_host;
    std::optional<QString>& m_film;
    std::optional<QString>& m_customer;
    RecordForm* m_form = nullptr;
    MatchList* m_filmMatches = nullptr;
    MatchList* m_clientMatches = nullptr;
};
