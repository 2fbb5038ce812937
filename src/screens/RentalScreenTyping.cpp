#include "screens/RentalScreen.h"

#include "look/DOSField.h"
#include "records/Codes.h"
#include "records/RentalRules.h"
#include "records/Search.h"
#include "screens/RentalRows.h"
#include "screens/ScreenHost.h"
#include "widgets/MatchList.h"
#include "widgets/RecordForm.h"

#include <QLineEdit>
#include <algorithm>

namespace {

QList<Film> filmsWithCode(const QList<Film>& films, std::optional<qint64> code) {
    QList<Film> found;
    for (const Film& film : films)
        if (code && film.code == code)
            found.append(film);
    return found;
}

bool sameName(const QString& name, const QString& typed) {
    return QString::compare(name, typed, Qt::CaseInsensitive) == 0;
}

} // namespace

void RentalScreen::controlTextDidChange(QLineEdit* field) {
    MatchList* films = m_filmMatches;
    MatchList* clients = m_clientMatches;
    const Store& store = m_host.shop();
    const QString text = field->text();

    switch (fieldTag(field)) {
    case rentalStartTag:
        updateRentalDue();
        return;
    case customerCodeTag: {
        m_customer.reset();
        const std::optional<qint64> code = numericCode(text);
        const QList<Customer> customers = activeCustomers(store);
        const auto found = std::find_if(customers.cbegin(), customers.cend(),
                                        [&code](const Customer& customer) { return code && customer.code == code; });
        if (found == customers.cend()) {
            setField(QStringLiteral("client"), QString());
            return;
        }
        m_customer = found->id;
        setField(QStringLiteral("client"), found->name);
        clients->hide();
        return;
    }
    case filmCodeTag:
    case filmTitleTag: {
        const bool byCode = fieldTag(field) == filmCodeTag;
        // Typing over the code of a tape chosen before (not one met on the way while
        // typing this code) may be the next tape of the same rental.
        if (byCode && m_film && !m_typedChoice && m_tapes.isEmpty() && !m_dropped)
            m_dropped = BasketTape{*m_film, requestedCopy(m_codeShown)};
        m_typedChoice = byCode;
        if (byCode)
            m_codeShown = text;
        else
            setCode(QString());
        m_film.reset();
        if (byCode)
            setField(QStringLiteral("film"), QString());
        const QList<Film> available = filmsOnShelf(store);
        const QList<Film> candidates =
            byCode ? filmsWithCode(available, numericCode(text)) : matchingFilms(available, text);
        QList<MatchItem> items;
        for (const Film& film : candidates)
            items.append({film.id, RentalRows::film(film)});
        films->set(items);
        films->setVisible(!text.isEmpty());
        clients->hide();
        // A unique code is a choice; a title fragment only narrows the list.
        if (byCode && candidates.size() == 1) {
            m_film = candidates.first().id;
            setField(QStringLiteral("film"), candidates.first().title);
            films->hide();
            updateRentalDue();
        }
        return;
    }
    case customerNameTag: {
        m_customer.reset();
        QList<Customer> candidates;
        for (const Customer& customer : activeCustomers(store))
            if (matches(customer.name, text))
                candidates.append(customer);
        QList<MatchItem> items;
        for (const Customer& customer : candidates)
            items.append({customer.id, RentalRows::customer(customer)});
        clients->set(items);
        clients->setVisible(!text.isEmpty());
        films->hide();
        if (candidates.size() == 1 && sameName(candidates.first().name, text)) {
            m_customer = candidates.first().id;
            clients->hide();
        }
        return;
    }
    default:
        return;
    }
}

// A film or a customer typed in full but never picked from its list is the choice
// when it is the only one that matches.
void RentalScreen::chooseTyped() {
    RecordForm* form = m_form;
    const Store& store = m_host.shop();
    const QString codeText = form->value(QStringLiteral("code"));
    if (!m_film) {
        const QList<Film> active = activeFilms(store);
        const QList<Film> candidates = codeText.isEmpty() ? matchingFilms(active, form->value(QStringLiteral("film")))
                                                          : filmsWithCode(active, numericCode(codeText));
        if (candidates.size() == 1)
            m_film = candidates.first().id;
    }
    if (!m_customer) {
        const QString clientCode = form->value(QStringLiteral("clientCode"));
        const QString name = form->value(QStringLiteral("client"));
        const std::optional<qint64> code = numericCode(clientCode);
        QList<Customer> candidates;
        for (const Customer& customer : activeCustomers(store))
            if (clientCode.isEmpty() ? sameName(customer.name, name) : (code && customer.code == code))
                candidates.append(customer);
        if (candidates.size() == 1)
            m_customer = candidates.first().id;
    }
}

// ---- What a scan typed into a field must not leave behind ------------------------

RentalScreen::Typed RentalScreen::typed() const {
    Typed typed{.film = m_film,
                .customer = m_customer,
                .dropped = m_dropped,
                .typedChoice = m_typedChoice,
                .filmListShown = !m_filmMatches->isHidden(),
                .clientListShown = !m_clientMatches->isHidden()};
    for (auto it = m_form->fields().cbegin(); it != m_form->fields().cend(); ++it)
        typed.texts.insert(it.key(), it.value()->text());
    return typed;
}

void RentalScreen::restore(const Typed& typed) {
    for (auto it = typed.texts.cbegin(); it != typed.texts.cend(); ++it)
        if (DOSField* field = m_form->fields().value(it.key()); field != nullptr && field->text() != it.value())
            field->setText(it.value());
    m_codeShown = typed.texts.value(QStringLiteral("code"));
    m_film = typed.film;
    m_customer = typed.customer;
    m_dropped = typed.dropped;
    m_typedChoice = typed.typedChoice;
    m_filmMatches->setVisible(typed.filmListShown);
    m_clientMatches->setVisible(typed.clientListShown);
}
