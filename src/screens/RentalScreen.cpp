#include "screens/RentalScreen.h"

#include "lists/Sections.h"
#include "look/DOSField.h"
#include "print/Receipt.h"
#include "records/Codes.h"
#include "records/DateText.h"
#include "records/MoneyText.h"
#include "records/RentalRules.h"
#include "screens/ScreenHost.h"
#include "widgets/MatchList.h"
#include "widgets/RecordForm.h"

#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>

namespace {

const char* const tagProperty = "tag";
constexpr double catalogueSeconds = 259200; // the initial due date assumes a catalogue title

} // namespace

int RentalScreen::fieldTag(const QWidget* view) {
    return view != nullptr ? view->property(tagProperty).toInt() : 0;
}

RentalScreen::RentalScreen(ScreenHost& host, std::optional<QString>& rentalFilm, std::optional<QString>& rentalCustomer,
                           QList<BasketTape>& rentalTapes)
    : m_host(host), m_film(rentalFilm), m_customer(rentalCustomer), m_form(new RecordForm), m_tapes(rentalTapes) {
    setParent(m_form);
    const std::optional<Film> rented = m_film ? storedFilm(*m_film) : std::nullopt;
    const std::optional<Customer> renter = m_customer ? storedCustomer(*m_customer) : std::nullopt;
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
        const std::optional<Film> chosen = storedFilm(id);
        if (!chosen)
            return;
        m_film = chosen->id;
        m_dropped.reset();
        m_typedChoice = false;
        setCode(filmCode(*chosen));
        setField(QStringLiteral("film"), chosen->title);
        m_filmMatches->hide();
        updateRentalDue();
    });
    addField(QStringLiteral("clientCode"), QStringLiteral("CÓD. CLIENTE"), renter ? customerCode(*renter) : QString(),
             true, customerCodeTag);
    addField(QStringLiteral("client"), QStringLiteral("CLIENTE"), renter ? renter->name : QString(), true,
             customerNameTag);
    m_clientMatches = addMatches([this](const QString& id) {
        const std::optional<Customer> chosen = storedCustomer(id);
        if (!chosen)
            return;
        m_customer = chosen->id;
        setField(QStringLiteral("clientCode"), customerCode(*chosen));
        setField(QStringLiteral("client"), chosen->name);
        m_clientMatches->hide();
    });
    addField(QStringLiteral("start"), QStringLiteral("DATA / HORA"), dateTimeText(now), true, rentalStartTag);
    addField(QStringLiteral("due"), QStringLiteral("DEVOLUÇÃO"), dateTimeText(now.plusSeconds(catalogueSeconds)), false,
             0);
    addField(QStringLiteral("fine"), QStringLiteral("MULTA/DIA R$"), QStringLiteral("2,00"), true, 0);
    m_codeShown = form->value(QStringLiteral("code"));
    connect(form->fields().value(QStringLiteral("code")), &QLineEdit::returnPressed, this, &RentalScreen::codeEntered);

    // The tapes of a rental of several, with their total, under the form.
    m_basket = new MatchList;
    m_basket->list()->setObjectName(QStringLiteral("tapes"));
    m_basket->list()->installEventFilter(this);
    m_basketTotal = host.label(QString());
    auto* rows = static_cast<QVBoxLayout*>(form->layout());
    rows->addWidget(m_basket);
    rows->addWidget(m_basketTotal);
    showTapes();

    host.addBody(form);
    host.spacer();
    host.actionRow({{QStringLiteral("APAGAR"), std::bind_front(&RentalScreen::clearRental, this)},
                    {QStringLiteral("SALVAR"), std::bind_front(&RentalScreen::finalizeRental, this)}});
}

void RentalScreen::updateRentalDue() {
    RecordForm* form = m_form;
    const std::optional<Instant> start = parseDateTime(form->value(QStringLiteral("start")));
    if (!start)
        return;
    const std::optional<Film> chosen = m_film ? storedFilm(*m_film) : std::nullopt;
    const bool release = chosen && chosen->release.value_or(false);
    setField(QStringLiteral("due"), dateTimeText(automaticDue(*start, release)));
}

void RentalScreen::clearRental() {
    if (QWidget* focused = m_form->window()->focusWidget())
        focused->clearFocus();
    m_film.reset();
    m_customer.reset();
    m_tapes.clear();
    m_dropped.reset();
    m_host.clearSearch();
    for (DOSField* field : m_form->fields())
        field->clear();
    m_codeShown.clear();
    showTapes();
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

    chooseTyped();

    const QString customerID = m_customer.value_or(QString());
    if (m_tapes.size() > 1) {
        finalizeTapes(customerID);
        return;
    }
    const QString filmID = m_film.value_or(QString());
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
    const std::optional<Film> film = storedFilm(filmID);
    commitRented(store, rentedStore(store, {.film = filmID,
                                            .customer = customerID,
                                            .copy = requestedCopy(codeText),
                                            .start = *start,
                                            .due = automaticDue(*start, film->release.value_or(false)),
                                            .finePerDay = *finePerDay}));
}

// The rented store saved, then the list of rentals shown; or why it cannot be.
void RentalScreen::commitRented(const Store& before, const Ruled<Store>& rented) {
    if (const auto* refusal = std::get_if<RuleRefusal>(&rented)) {
        m_host.alert(refusal->title, refusal->text);
        return;
    }
    const Store& changed = std::get<Store>(rented);
    const CounterAct act = rentalAct(before, changed);
    if (!m_host.commit(changed))
        return;
    m_film.reset();
    m_customer.reset();
    m_tapes.clear();
    ScreenHost& host = m_host;
    host.navigate(Section::rented); // the redraw deletes this screen: nothing of it is used after
    host.rememberCounterAct(act);
}

std::optional<Film> RentalScreen::storedFilm(const QString& id) const {
    const Store& store = m_host.shop();
    const auto found =
        std::find_if(store.films.cbegin(), store.films.cend(), [&](const Film& f) { return f.id == id; });
    return found != store.films.cend() ? std::make_optional(*found) : std::nullopt;
}

std::optional<Customer> RentalScreen::storedCustomer(const QString& id) const {
    const Store& store = m_host.shop();
    const auto found =
        std::find_if(store.customers.cbegin(), store.customers.cend(), [&](const Customer& c) { return c.id == id; });
    return found != store.customers.cend() ? std::make_optional(*found) : std::nullopt;
}

void RentalScreen::setField(const QString& key, const QString& text) {
    if (DOSField* field = m_form->fields().value(key))
        field->setText(text);
}

void RentalScreen::setCode(const QString& text) {
    setField(QStringLiteral("code"), text);
    m_codeShown = text;
}
