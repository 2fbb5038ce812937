#include "app/App.h"

#include "lists/RecordSaving.h"
#include "look/DOSButton.h"
#include "look/DOSField.h"
#include "look/DOSTable.h"
#include "records/Codes.h"
#include "records/IntegerText.h"
#include "records/PhoneText.h"
#include "records/RentalRules.h"
#include "widgets/RecordForm.h"
#include "widgets/WrappingSynopsisView.h"

#include <QHBoxLayout>
#include <QMainWindow>
#include <QScrollArea>
#include <QScrollBar>
#include <functional>

namespace {

constexpr int formMinimumHeight = 240;
constexpr int cardButtonWidth = 230;

QString priceText(qint64 cents) {
    return QString::asprintf("%.2f", double(cents) / 100.0);
}

void addFilmRows(RecordForm* form, const std::optional<Film>& film, const Store& store) {
    form->add("code", QStringLiteral("CÓDIGO"), inventoryCode(film ? film->code : nextFilmCode(store)), false);
    form->add("name", QStringLiteral("TÍTULO EM PORTUGUÊS"), film ? film->title : QString());
    form->add("original", QStringLiteral("TÍTULO ORIGINAL"),
              film ? film->originalTitle.value_or(QString()) : QString());
    form->add("release", QStringLiteral("CATEGORIA"),
              film && film->release.value_or(false) ? QStringLiteral("LANÇAMENTO") : QStringLiteral("ACERVO"));
    form->add("genre", QStringLiteral("GÊNERO"), film ? film->genre : QString());
    form->add("year", QStringLiteral("ANO"), film && film->year ? QString::number(*film->year) : QString());
    form->add("copies", QStringLiteral("QUANT."), QString::number(film ? film->copies : 1));
    form->add("price", QStringLiteral("PREÇO (R$)"), priceText(film ? film->price : 500));
    form->addLong("sinapse", QStringLiteral("SINOPSE"), film ? film->sinapse.value_or(QString()) : QString());
}

// The phone is kept in its written form while it is typed, the caret after the last digit.
void formatWhileTyping(DOSField* phone) {
    QObject::connect(phone, &QLineEdit::textChanged, phone, [phone](const QString& text) {
        const QString formatted = formatPhone(text);
        if (formatted != text)
            phone->setText(formatted);
        phone->setCursorPosition(int(phone->text().size()));
    });
}

void addCustomerRows(RecordForm* form, const std::optional<Customer>& customer, const Store& store) {
    const auto text = [&customer](const std::optional<QString> Customer::*field) {
        return customer ? (*customer.*field).value_or(QString()) : QString();
    };
    form->add("code", QStringLiteral("CÓDIGO"),
              customer ? customerCode(*customer) : QString::asprintf("%04lld", (long long)nextCustomerCode(store)));
    form->add("name", QStringLiteral("NOME"), customer ? customer->name : QString());
    form->add("address", QStringLiteral("ENDEREÇO"), text(&Customer::address));
    form->add("city", QStringLiteral("CIDADE"), text(&Customer::city));
    form->add("state", QStringLiteral("ESTADO"), text(&Customer::state));
    formatWhileTyping(form->add("phone", QStringLiteral("TELEFONE (DDD)"), customer ? customer->phone : QString()));
    form->add("zip", QStringLiteral("CEP"), text(&Customer::zip));
}

void setEditable(RecordForm* form, bool editable, bool codeLocked) {
    for (auto [key, field] : form->fields().asKeyValueRange())
        field->setReadOnly(!editable || (codeLocked && key == QStringLiteral("code")));
    for (WrappingSynopsisView* text : form->longFields())
        text->setReadOnly(!editable);
}

FormValues valuesOf(const RecordForm* form) {
    FormValues values;
    for (const QString& key : form->fields().keys())
        values.insert(key, form->value(key));
    for (const QString& key : form->longFields().keys())
        values.insert(key, form->value(key));
    return values;
}

} // namespace

void App::recordScreen(std::optional<QString> id) {
    if (window != nullptr)
        if (QWidget* focused = window->focusWidget())
            focused->clearFocus();
    clearBody();
    screen = {};

    const bool creatingFilm = section == Section::films && !id;
    for (DOSButton* entry : navButtons) {
        entry->setOn(entry->tag() == (creatingFilm ? int(MenuCommand::newFilm) : section));
        entry->update();
    }

    if (section == Section::customers && id) {
        auto* row = new QWidget;
        auto* tabRow = new QHBoxLayout(row);
        tabRow->setContentsMargins(0, 0, 0, 0);
        DOSButton* card = button(QStringLiteral("IMPRIMIR CARTEIRINHA"), std::bind_front(&App::printMembers, this));
        card->setMinimumWidth(cardButtonWidth);
        tabRow->addWidget(card);
        tabRow->addStretch(1);
        screen.tabs.append(card);
        addBody(row);
    }

    auto* form = new RecordForm;
    screen.formView = form;
    editingEnabled = !id;
    if (section == Section::films)
        addFilmRows(form, id ? film(*id) : std::nullopt, store);
    else
        addCustomerRows(form, id ? customer(*id) : std::nullopt, store);
    setEditable(form, editingEnabled, section == Section::films);

    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    scroll->setWidgetResizable(true);
    scroll->viewport()->setAutoFillBackground(false);
    form->setAutoFillBackground(false);
    form->setMinimumHeight(formMinimumHeight);
    scroll->setWidget(form);
    scroll->setMinimumHeight(formMinimumHeight);
    addBody(scroll, 1);

    const QString saveTitle = section == Section::films ? QStringLiteral("SALVAR") : QStringLiteral("FINALIZAR");
    QList<QPair<QString, Action>> actions;
    if (id) {
        if (section == Section::films)
            actions.append({QStringLiteral("ETIQUETAS"), std::bind_front(&App::printLabels, this)});
        actions.append({QStringLiteral("EDITAR"), std::bind_front(&App::enableEdit, this)});
        actions.append({QStringLiteral("APAGAR"), std::bind_front(&App::deleteSelected, this)});
    }
    actions.append({saveTitle, std::bind_front(&App::saveRecord, this)});
    actionRow(actions);

    focus(form->fields().value("name"));
}

void App::enableEdit() {
    if (screen.formView == nullptr)
        return;
    editingEnabled = true;
    setEditable(screen.formView, true, section == Section::films);
    focus(screen.formView->fields().value("name"));
}

void App::saveRecord() {
    if (window != nullptr)
        if (QWidget* focused = window->focusWidget())
            focused->clearFocus();
    if (screen.formView == nullptr)
        return;
    if (!editingEnabled) {
        editID.reset();
        render();
        return;
    }
    Store changed;
    try {
        const FormValues values = valuesOf(screen.formView);
        changed = section == Section::films ? savingFilm(store, values, editID) : savingCustomer(store, values, editID);
    } catch (const FilmCSVError& refusal) {
        alert(refusal.title(), refusal.description());
        return;
    }
    if (!commit(changed))
        return;
    editID.reset();
    render();
    focus(table);
}

void App::deleteSelected() {
    std::optional<QString> id = screen.formView != nullptr ? editID : selected();
    if (!id)
        return;
    const bool films = section == Section::films;
    if (!(films ? canDeleteFilm(store, *id) : canDeleteCustomer(store, *id))) {
        alert(QStringLiteral("Cadastro em uso"),
              QStringLiteral("Finalize as locações em aberto antes de apagar este cadastro."));
        return;
    }
    ModalAlert question;
    question.title = QStringLiteral("Apagar cadastro?");
    question.text =
        QStringLiteral("O cadastro sai das listas. O histórico é mantido e pode ser restaurado pelo menu CINEFITA.");
    question.buttons = {QStringLiteral("APAGAR"), QStringLiteral("CANCELAR")};
    if (styledModal(std::move(question)) != firstButtonAnswer)
        return;
    if (!commit(films ? markingFilmDeleted(store, *id, true) : markingCustomerDeleted(store, *id, true)))
        return;
    editID.reset();
    render();
}

void App::restoreRecord() {
    const auto answers =
        form(QStringLiteral("Restaurar cadastro"), {{QStringLiteral("TIPO: FILME OU CLIENTE"), QStringLiteral("FILME")},
                                                    {QStringLiteral("CÓDIGO"), QString()}});
    if (!answers)
        return;
    const QString kind = answers->at(0).toUpper();
    const std::optional<qint64> code = wholeInteger(answers->at(1));
    std::optional<Store> restored;
    const auto removedWithCode = [&code](const auto& record) {
        return code && record.code == *code && record.deleted.value_or(false);
    };
    if (kind == QStringLiteral("FILME")) {
        const auto found = std::find_if(store.films.cbegin(), store.films.cend(), removedWithCode);
        if (found != store.films.cend())
            restored = markingFilmDeleted(store, found->id, false);
    } else if (kind == QStringLiteral("CLIENTE")) {
        const auto found = std::find_if(store.customers.cbegin(), store.customers.cend(), removedWithCode);
        if (found != store.customers.cend())
            restored = markingCustomerDeleted(store, found->id, false);
    }
    if (!restored) {
        alert(QStringLiteral("Não encontrado"), QStringLiteral("Confira tipo e código do cadastro apagado."));
        return;
    }
    if (commit(*restored))
        render();
}

// The preview pictures the registration form filled with a well-known film.
void App::previewFilmForm() {
    navigate(Section::films);
    editID.reset();
    recordScreen(std::nullopt);
    const auto fill = [this](const char* key, const QString& text) {
        screen.formView->fields().value(QString::fromLatin1(key))->setText(text);
    };
    fill("name", QStringLiteral("DE VOLTA PARA O FUTURO"));
    fill("original", QStringLiteral("BACK TO THE FUTURE"));
    fill("genre", QStringLiteral("Ficção científica, Aventura"));
    fill("year", QStringLiteral("1985"));
    screen.formView->longFields()
        .value(QStringLiteral("sinapse"))
        ->setPlainText(QStringLiteral("Um jovem viaja no tempo a bordo de um DeLorean. Uma sessão perfeita para quem "
                                      "gosta de aventura e nostalgia."));
    focus(screen.formView->controls().value(0));
    if (window != nullptr && window->layout() != nullptr)
        window->layout()->activate();
}
