#include "app/App.h"

#include "look/DOSField.h"
#include "look/DOSSearchField.h"
#include "records/Codes.h"
#include "records/DateText.h"
#include "records/MoneyText.h"
#include "records/RentalRules.h"
#include "records/Search.h"
#include "widgets/MatchList.h"
#include "widgets/RecordForm.h"

#include <QMainWindow>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>

// The rental screen: pick a film and a customer through their search fields and
// drop-down lists, then save one rental of one numbered copy.

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

} // namespace

int App::fieldTag(const QWidget* view) {
    return view != nullptr ? view->property(tagProperty).toInt() : 0;
}

void App::rentalScreen() {
    const std::optional<Film> rented = rentalFilm ? film(*rentalFilm) : std::nullopt;
    const std::optional<Customer> renter = rentalCustomer ? customer(*rentalCustomer) : std::nullopt;
    const Instant now = seams.clock();

    auto* form = new RecordForm;
    screen.formView = form;
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
    screen.filmMatches = addMatches([this](const QString& id) {
        const std::optional<Film> chosen = film(id);
        if (!chosen || screen.formView == nullptr)
            return;
        rentalFilm = chosen->id;
        setText(screen.formView, QStringLiteral("code"), filmCode(*chosen));
        setText(screen.formView, QStringLiteral("film"), chosen->title);
        screen.filmMatches->hide();
        updateRentalDue();
    });
    addField(QStringLiteral("clientCode"), QStringLiteral("CÓD. CLIENTE"), renter ? customerCode(*renter) : QString(),
             true, customerCodeTag);
    addField(QStringLiteral("client"), QStringLiteral("CLIENTE"), renter ? renter->name : QString(), true,
             customerNameTag);
    screen.clientMatches = addMatches([this](const QString& id) {
        const std::optional<Customer> chosen = customer(id);
        if (!chosen || screen.formView == nullptr)
            return;
        rentalCustomer = chosen->id;
        setText(screen.formView, QStringLiteral("clientCode"), customerCode(*chosen));
        setText(screen.formView, QStringLiteral("client"), chosen->name);
        screen.clientMatches->hide();
    });
    addField(QStringLiteral("start"), QStringLiteral("DATA / HORA"), dateTimeText(now), true, rentalStartTag);
    addField(QStringLiteral("due"), QStringLiteral("DEVOLUÇÃO"), dateTimeText(now.plusSeconds(catalogueSeconds)), false,
             0);
    addField(QStringLiteral("fine"), QStringLiteral("MULTA/DIA R$"), QStringLiteral("2,00"), true, 0);

    addBody(form);
    spacer();
    actionRow({{QStringLiteral("APAGAR"), std::bind_front(&App::clearRental, this)},
               {QStringLiteral("SALVAR"), std::bind_front(&App::finalizeRental, this)}});
}

void App::controlTextDidChange(QLineEdit* field) {
    RecordForm* form = screen.formView;
    MatchList* films = screen.filmMatches;
    MatchList* clients = screen.clientMatches;
    if (form == nullptr || films == nullptr || clients == nullptr)
        return;
    const QString text = field->text();

    switch (fieldTag(field)) {
    case rentalStartTag:
        updateRentalDue();
        return;
    case customerCodeTag: {
        rentalCustomer.reset();
        const std::optional<qint64> code = numericCode(text);
        const QList<Customer> customers = activeCustomers(store);
        const auto found = std::find_if(customers.cbegin(), customers.cend(),
                                        [&code](const Customer& customer) { return code && customer.code == code; });
        if (found == customers.cend()) {
            setText(form, QStringLiteral("client"), QString());
            return;
        }
        rentalCustomer = found->id;
        setText(form, QStringLiteral("client"), found->name);
        clients->hide();
        return;
    }
    case filmCodeTag:
    case filmTitleTag: {
        const bool byCode = fieldTag(field) == filmCodeTag;
        rentalFilm.reset();
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
            rentalFilm = candidates.first().id;
            setText(form, QStringLiteral("film"), candidates.first().title);
            films->hide();
            updateRentalDue();
        }
        return;
    }
    case customerNameTag: {
        rentalCustomer.reset();
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
            rentalCustomer = candidates.first().id;
            clients->hide();
        }
        return;
    }
    default:
        return;
    }
}

void App::updateRentalDue() {
    RecordForm* form = screen.formView;
    if (form == nullptr)
        return;
    const std::optional<Instant> start = parseDateTime(form->value(QStringLiteral("start")));
    if (!start)
        return;
    const std::optional<Film> chosen = rentalFilm ? film(*rentalFilm) : std::nullopt;
    const bool release = chosen && chosen->release.value_or(false);
    setText(form, QStringLiteral("due"), dateTimeText(automaticDue(*start, release)));
}

void App::clearRental() {
    if (QWidget* focused = window->focusWidget())
        focused->clearFocus();
    rentalFilm.reset();
    rentalCustomer.reset();
    search->clear();
    if (RecordForm* form = screen.formView) {
        for (DOSField* field : form->fields())
            field->clear();
    }
    for (MatchList* matches : {screen.filmMatches, screen.clientMatches}) {
        if (matches != nullptr) {
            matches->set({});
            matches->hide();
        }
    }
    if (screen.formView != nullptr)
        focus(screen.formView->fields().value(QStringLiteral("code")));
}

void App::finalizeRental() {
    if (QWidget* focused = window->focusWidget())
        focused->clearFocus();
    RecordForm* form = screen.formView;
    if (form == nullptr)
        return;
    const QString codeText = form->value(QStringLiteral("code"));

    if (!rentalFilm) {
        const QList<Film> active = activeFilms(store);
        const QList<Film> candidates = codeText.isEmpty() ? matchingFilms(active, form->value(QStringLiteral("film")))
                                                          : filmsWithCode(active, numericCode(codeText));
        if (candidates.size() == 1)
            rentalFilm = candidates.first().id;
    }
    if (!rentalCustomer) {
        const QString clientCode = form->value(QStringLiteral("clientCode"));
        const QString name = form->value(QStringLiteral("client"));
        const std::optional<qint64> code = numericCode(clientCode);
        QList<Customer> candidates;
        for (const Customer& customer : activeCustomers(store))
            if (clientCode.isEmpty() ? sameName(customer.name, name) : (code && customer.code == code))
                candidates.append(customer);
        if (candidates.size() == 1)
            rentalCustomer = candidates.first().id;
    }

    const QString filmID = rentalFilm.value_or(QString());
    const QString customerID = rentalCustomer.value_or(QString());
    if (const std::optional<RuleRefusal> refusal = rentalChoiceRefusal(store, filmID, customerID)) {
        alert(refusal->title, refusal->text);
        return;
    }
    const std::optional<Instant> start = parseDateTime(form->value(QStringLiteral("start")));
    const std::optional<qint64> finePerDay = cents(form->value(QStringLiteral("fine")));
    if (!start || !finePerDay) {
        alert(QStringLiteral("Data ou multa inválida"),
              QStringLiteral("Use datas no formato dd/mm/aaaa. A devolução não pode ser anterior à locação."));
        return;
    }
    const std::optional<Film> film = this->film(filmID);
    const Ruled<Store> rented = rentedStore(store, {.film = filmID,
                                                    .customer = customerID,
                                                    .copy = requestedCopy(codeText),
                                                    .start = *start,
                                                    .due = automaticDue(*start, film->release.value_or(false)),
                                                    .finePerDay = *finePerDay});
    if (const auto* refusal = std::get_if<RuleRefusal>(&rented)) {
        alert(refusal->title, refusal->text);
        return;
    }
    const Store& changed = std::get<Store>(rented);
    if (!commit(changed))
        return;
    rentalFilm.reset();
    rentalCustomer.reset();
    navigate(Section::rented);
}
