#include "screens/RentalScreen.h"

#include "lists/Sections.h"
#include "look/DOSField.h"
#include "print/Receipt.h"
#include "records/Codes.h"
#include "records/DateText.h"
#include "records/MoneyText.h"
#include "records/RentalRules.h"
#include "records/Search.h"
#include "screens/ScreenHost.h"
#include "widgets/MatchList.h"
#include "widgets/RecordForm.h"

#include <QLineEdit>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>

namespace {

const char* const tagProperty = "tag";
constexpr double catalogueSeconds = 259200; // the initial due date assumes a catalogue title

const QString separator = QStringLiteral(" — ");

QString filmLabel(const Film& film) {
    return filmCode(film) + separator + film.title + separator + money(film.price);
}

QString customerLabel(const Customer& customer) {
    return customerCode(customer) + separator + customer.name + separator + customer.phone;
}

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

// "COD-0001-002" asks for copy 2; a code of fewer pieces asks for none.
void setText(RecordForm* form, const QString& key, const QString& text) {
    if (DOSField* field = form->fields().value(key))
        field->setText(text);
}

std::optional<Film> film(const Store& store, const QString& id) {
    const auto found =
        std::find_if(store.films.cbegin(), store.films.cend(), [&](const Film& f) { return f.id == id; });
    return found != store.films.cend() ? std::make_optional(*found) : std::nullopt;
}

std::optional<Customer> customer(const Store& store, const QString& id) {
    const auto found =
        std::find_if(store.customers.cbegin(), store.customers.cend(), [&](const Customer& c) { return c.id == id; });
    return found != store.customers.cend() ? std::make_optional(*found) : std::nullopt;
}

} // namespace

int RentalScreen::fieldTag(const QWidget* view) {
    return view != nullptr ? view->property(tagProperty).toInt() : 0;
}

RentalScreen::RentalScreen(ScreenHost& host, std::optional<QString>& rentalFilm, std::optional<QString>& rentalCustomer)
    : m_host(host), m_film(rentalFilm), m_customer(rentalCustomer), m_form(new RecordForm) {
    setParent(m_form);
    const std::optional<Film> rented = m_film ? film(host.shop(), *m_film) : std::nullopt;
    const std::optional<Customer> renter = m_customer ? customer(host.shop(), *m_customer) : std::nullopt;
    const Instant now = host.now();

    RecordForm* form = m_form;
    auto addField = [this, form](const QString& key, const QString& caption, const QString& value, bool editable,
                                 int tag) {
        DOSField* field = form->add(key, caption, value, editable);
        if (tag != 0)
            field->setProperty(tagProperty, tag);
        connect(field, &QLineEdit::textEdited, this, [this, field] { controlTextDidChange(field); });
    };
    // The drop-downs go under their fields, in the form's own column of rows.
    auto addMatches = [form](std::function<void(const QString&)> onSelect) {
        auto* matches = new MatchList;
        matches->onSelect = std::move(onSelect);
        matches->hide();
        static_cast<QVBoxLayout*>(form->layout())->addWidget(matches);
        return matches;
    };

    addField(QStringLiteral("code"), QStringLiteral("CÓDIGO"), rented ? filmCode(*rented) : QString(), true,
             filmCodeTag);
    addField(QStringLiteral("film"), QStringLiteral("FILME"), rented ? rented->title : QString(), true, filmTitleTag);
    m_filmMatches = addMatches([this](const QString& id) {
        const std::optional<Film> chosen = film(m_host.shop(), id);
        if (!chosen)
            return;
        m_film = chosen->id;
        setText(m_form, QStringLiteral("code"), filmCode(*chosen));
        setText(m_form, QStringLiteral("film"), chosen->title);
        m_filmMatches->hide();
        updateRentalDue();
    });
    addField(QStringLiteral("clientCode"), QStringLiteral("CÓD. CLIENTE"), renter ? customerCode(*renter) : QString(),
             true, customerCodeTag);
    addField(QStringLiteral("client"), QStringLiteral("CLIENTE"), renter ? renter->name : QString(), true,
             customerNameTag);
    m_clientMatches = addMatches([this](const QString& id) {
        const std::optional<Customer> chosen = customer(m_host.shop(), id);
        if (!chosen)
            return;
        m_customer = chosen->id;
        setText(m_form, QStringLiteral("clientCode"), customerCode(*chosen));
        setText(m_form, QStringLiteral("client"), chosen->name);
        m_clientMatches->hide();
    });
    addField(QStringLiteral("start"), QStringLiteral("DATA / HORA"), dateTimeText(now), true, rentalStartTag);
    addField(QStringLiteral("due"), QStringLiteral("DEVOLUÇÃO"), dateTimeText(now.plusSeconds(catalogueSeconds)), false,
             0);
    addField(QStringLiteral("fine"), QStringLiteral("MULTA/DIA R$"), QStringLiteral("2,00"), true, 0);

    host.addBody(form);
    host.spacer();
    host.actionRow({{QStringLiteral("APAGAR"), std::bind_front(&RentalScreen::clearRental, this)},
                    {QStringLiteral("SALVAR"), std::bind_front(&RentalScreen::finalizeRental, this)}});
}

void RentalScreen::controlTextDidChange(QLineEdit* field) {
    RecordForm* form = m_form;
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
            setText(form, QStringLiteral("client"), QString());
            return;
        }
        m_customer = found->id;
        setText(form, QStringLiteral("client"), found->name);
        clients->hide();
        return;
    }
    case filmCodeTag:
    case filmTitleTag: {
        const bool byCode = fieldTag(field) == filmCodeTag;
        m_film.reset();
        setText(form, byCode ? QStringLiteral("film") : QStringLiteral("code"), QString());
        const QList<Film> available = filmsOnShelf(store);
        const QList<Film> candidates =
            byCode ? filmsWithCode(available, numericCode(text)) : matchingFilms(available, text);
        QList<MatchItem> items;
        for (const Film& film : candidates)
            items.append({film.id, filmLabel(film)});
        films->set(items);
        films->setVisible(!text.isEmpty());
        clients->hide();
        // A unique code is a choice; a title fragment only narrows the list.
        if (byCode && candidates.size() == 1) {
            m_film = candidates.first().id;
            setText(form, QStringLiteral("film"), candidates.first().title);
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
            items.append({customer.id, customerLabel(customer)});
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

void RentalScreen::updateRentalDue() {
    RecordForm* form = m_form;
    const std::optional<Instant> start = parseDateTime(form->value(QStringLiteral("start")));
    if (!start)
        return;
    const std::optional<Film> chosen = m_film ? film(m_host.shop(), *m_film) : std::nullopt;
    const bool release = chosen && chosen->release.value_or(false);
    setText(form, QStringLiteral("due"), dateTimeText(automaticDue(*start, release)));
}

void RentalScreen::clearRental() {
    if (QWidget* focused = m_form->window()->focusWidget())
        focused->clearFocus();
    m_film.reset();
    m_customer.reset();
    m_host.clearSearch();
    for (DOSField* field : m_form->fields())
        field->clear();
    for (MatchList* matches : {m_filmMatches, m_clientMatches}) {
        matches->set({});
        matches->hide();
    }
    m_host.focus(m_form->fields().value(QStringLiteral("code")));
}

void RentalScreen::finalizeRental() {
    if (QWidget* focused = m_form->window()->focusWidget())
        focused->clearFocus();
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

    const QString filmID = m_film.value_or(QString());
    const QString customerID = m_customer.value_or(QString());
    if (const std::optional<RuleRefusal> refusal = rentalChoiceRefusal(store, filmID, customerID)) {
        m_host.alert(refusal->title, refusal->text);
        return;
    }
    const std::optional<Instant> start = parseDateTime(form->value(QStringLiteral("start")));
    const std::optional<qint64> finePerDay = cents(form->value(QStringLiteral("fine")));
    if (!start || !finePerDay) {
        m_host.alert(QStringLiteral("Data ou multa inválida"),
                     QStringLiteral("Use datas no formato dd/mm/aaaa. A devolução não pode ser anterior à locação."));
        return;
    }
    const std::optional<Film> film = ::film(store, filmID);
    const Ruled<Store> rented = rentedStore(store, {.film = filmID,
                                                    .customer = customerID,
                                                    .copy = requestedCopy(codeText),
                                                    .start = *start,
                                                    .due = automaticDue(*start, film->release.value_or(false)),
                                                    .finePerDay = *finePerDay});
    if (const auto* refusal = std::get_if<RuleRefusal>(&rented)) {
        m_host.alert(refusal->title, refusal->text);
        return;
    }
    const Store& changed = std::get<Store>(rented);
    const CounterAct act = rentalAct(store, changed);
    if (!m_host.commit(changed))
        return;
    m_film.reset();
    m_customer.reset();
    ScreenHost& host = m_host;
    host.navigate(Section::rented); // the redraw deletes this screen: nothing of it is used after
    host.rememberCounterAct(act);
}
