#include "screens/RentalScreen.h"

#include "lists/Sections.h"
#include "look/DOSButton.h"
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

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
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

RentalScreen::RentalScreen(ScreenHost& host, std::optional<QString>& rentalFilm, std::optional<QString>& rentalCustomer,
                           QList<BasketTape>& rentalTapes)
    : m_host(host), m_film(rentalFilm), m_customer(rentalCustomer), m_form(new RecordForm), m_tapes(rentalTapes) {
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
        m_dropped.reset();
        m_typedChoice = false;
        setCode(filmCode(*chosen));
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
            setText(form, QStringLiteral("film"), QString());
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

// ---- Several tapes in one rental ------------------------------------------------

QWidget* RentalScreen::basketList() const {
    return m_basket->list();
}

void RentalScreen::setCode(const QString& text) {
    setText(m_form, QStringLiteral("code"), text);
    m_codeShown = text;
}

DOSButton* RentalScreen::saveButton() const {
    // The body may still hold the hidden action row of the screen drawn before this one.
    QWidget* body = m_form->parentWidget();
    for (DOSButton* button : body != nullptr ? body->findChildren<DOSButton*>() : QList<DOSButton*>())
        if (button->text() == QStringLiteral("SALVAR") && button->isVisibleTo(body))
            return button;
    return nullptr;
}

// The one tape of a rental, in the fields as if picked from the list.
void RentalScreen::chooseTape(const BasketTape& tape) {
    const std::optional<Film> chosen = film(m_host.shop(), tape.film);
    if (!chosen)
        return;
    m_film = chosen->id;
    m_dropped.reset();
    m_typedChoice = false;
    setCode(tape.copy ? copyCode(chosen->code, *tape.copy) : filmCode(*chosen));
    setText(m_form, QStringLiteral("film"), chosen->title);
    m_filmMatches->hide();
    updateRentalDue();
}

void RentalScreen::takeTape(const Film& film, std::optional<qint64> copy) {
    const BasketTape tape{film.id, copy};
    if (m_tapes.isEmpty() && !m_film) {
        chooseTape(tape);
    } else {
        addTape(BasketTape{*m_film, requestedCopy(m_form->value(QStringLiteral("code")))}, tape);
    }
    afterTape();
}

// A tape joins the list (the one chosen before it first, when the list starts) and
// the form is cleared for the next one.
void RentalScreen::addTape(const BasketTape& chosenBefore, const BasketTape& tape) {
    if (m_tapes.isEmpty())
        m_tapes.append(chosenBefore);
    m_tapes.append(tape);
    m_film.reset();
    m_dropped.reset();
    setCode(QString());
    setText(m_form, QStringLiteral("film"), QString());
    m_filmMatches->hide();
    showTapes();
}

// After each tape the operator is led to what the rental still needs.
void RentalScreen::afterTape() {
    if (m_customer)
        m_host.focus(saveButton());
    else
        m_host.focus(m_form->fields().value(QStringLiteral("clientCode")));
}

void RentalScreen::chooseCustomer(const Customer& customer) {
    m_customer = customer.id;
    setText(m_form, QStringLiteral("clientCode"), customerCode(customer));
    setText(m_form, QStringLiteral("client"), customer.name);
    m_clientMatches->hide();
    m_host.focus(m_form->fields().value(QStringLiteral("code")));
}

// Return in CÓDIGO on a typed copy code adds it to the rental's tapes when another
// tape was chosen before; with one tape Return does nothing, as before.
void RentalScreen::codeEntered() {
    const QString text = m_form->value(QStringLiteral("code"));
    const std::optional<qint64> copy = requestedCopy(text);
    if (!m_film || !copy || (m_tapes.isEmpty() && !m_dropped))
        return;
    addTape(m_tapes.isEmpty() ? *m_dropped : BasketTape{}, BasketTape{*m_film, copy});
    afterTape();
}

void RentalScreen::showTapes() {
    const bool several = m_tapes.size() > 1;
    m_basket->setVisible(several);
    m_basketTotal->setVisible(several);
    if (!several)
        return;
    const Instant start = parseDateTime(m_form->value(QStringLiteral("start"))).value_or(m_host.now());
    const QList<BasketLine> lines = basketLines(m_host.shop(), m_tapes, start);
    QList<MatchItem> items;
    for (const BasketLine& line : lines)
        items.append({line.copyCode, line.copyCode + separator + line.title + separator + dateTimeText(line.due) +
                                         separator + money(line.price)});
    m_basket->set(items);
    m_basketTotal->setText(QStringLiteral("%1 FITAS — TOTAL ").arg(lines.size()) + money(basketTotal(lines)));
}

void RentalScreen::removeSelectedTape() {
    const QModelIndexList selected = m_basket->list()->selectionModel()->selectedRows();
    if (selected.isEmpty() || selected.first().row() >= m_tapes.size())
        return;
    const int row = selected.first().row();
    m_tapes.removeAt(row);
    if (m_tapes.size() == 1) {
        // Back to a rental of one tape, in the fields as the screen always shows it.
        const BasketTape last = m_tapes.takeFirst();
        showTapes();
        chooseTape(last);
        m_host.focus(m_form->fields().value(QStringLiteral("code")));
        return;
    }
    showTapes();
    m_basket->list()->selectRow(std::min(row, int(m_tapes.size()) - 1));
}

bool RentalScreen::eventFilter(QObject* watched, QEvent* event) {
    if (m_basket != nullptr && watched == m_basket->list() && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        removeSelectedTape();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void RentalScreen::finalizeTapes(const QString& customerID) {
    const Store& store = m_host.shop();
    const std::optional<Instant> start = parseDateTime(m_form->value(QStringLiteral("start")));
    const std::optional<qint64> finePerDay = cents(m_form->value(QStringLiteral("fine")));
    if (!customerID.isEmpty() && (!start || !finePerDay)) {
        m_host.alert(QStringLiteral("Data ou multa inválida"),
                     QStringLiteral("Use datas no formato dd/mm/aaaa. A devolução não pode ser anterior à locação."));
        return;
    }
    const Ruled<Store> rented = basketRentedStore(store, {.tapes = m_tapes,
                                                          .customer = customerID,
                                                          .start = start.value_or(m_host.now()),
                                                          .finePerDay = finePerDay.value_or(0)});
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
    m_tapes.clear();
    ScreenHost& host = m_host;
    host.navigate(Section::rented); // the redraw deletes this screen: nothing of it is used after
    host.rememberCounterAct(act);
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
