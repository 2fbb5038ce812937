#include "screens/RecordScreen.h"

#include "lists/RecordSaving.h"
#include "lists/Sections.h"
#include "look/DOSButton.h"
#include "look/DOSField.h"
#include "records/Codes.h"
#include "records/FilmCSVError.h"
#include "records/IntegerText.h"
#include "records/PhoneText.h"
#include "records/RentalRules.h"
#include "screens/ScreenHost.h"
#include "widgets/RecordForm.h"
#include "widgets/WrappingSynopsisView.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <algorithm>
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

template <typename Record> std::optional<Record> byID(const QList<Record>& records, const QString& id) {
    const auto found =
        std::find_if(records.cbegin(), records.cend(), [&id](const Record& record) { return record.id == id; });
    return found != records.cend() ? std::make_optional(*found) : std::nullopt;
}

} // namespace

RecordScreen::RecordScreen(ScreenHost& host, int section, const std::optional<QString>& id,
                           std::optional<QString>& editID, Printing printing, History history)
    : m_host(host), m_section(section), m_editID(editID), m_form(new RecordForm), m_editing(!id) {
    setParent(m_form);
    const Store& store = host.shop();
    if (section == Section::customers && id) {
        auto* row = new QWidget;
        auto* tabRow = new QHBoxLayout(row);
        tabRow->setContentsMargins(0, 0, 0, 0);
        DOSButton* card = host.button(QStringLiteral("IMPRIMIR CARTEIRINHA"), printing.card);
        card->setMinimumWidth(cardButtonWidth);
        tabRow->addWidget(card);
        tabRow->addStretch(1);
        m_tabs.append(card);
        host.addBody(row);
    }

    RecordForm* form = m_form;
    if (section == Section::films)
        addFilmRows(form, id ? byID(store.films, *id) : std::nullopt, store);
    else
        addCustomerRows(form, id ? byID(store.customers, *id) : std::nullopt, store);
    setEditable(form, m_editing, section == Section::films);

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
    host.addBody(scroll, 1);

    const QString saveTitle = section == Section::films ? QStringLiteral("SALVAR") : QStringLiteral("FINALIZAR");
    QList<QPair<QString, ScreenHost::Action>> actions;
    if (id) {
        // First, so the other buttons keep their places counted from the end of the Tab ring.
        actions.append({QStringLiteral("HISTÓRICO"), [history, recordID = *id] {
                            history(recordID);
                        }});
        if (section == Section::films)
            actions.append({QStringLiteral("ETIQUETAS"), printing.labels});
        actions.append({QStringLiteral("EDITAR"), std::bind_front(&RecordScreen::enableEdit, this)});
        actions.append({QStringLiteral("APAGAR"), [this] {
                            if (m_editID)
                                deleteRecord(m_host, m_section, *m_editID, m_editID);
                        }});
    }
    actions.append({saveTitle, std::bind_front(&RecordScreen::saveRecord, this)});
    host.actionRow(actions);
}

void RecordScreen::enableEdit() {
    m_editing = true;
    setEditable(m_form, true, m_section == Section::films);
    m_host.focus(m_form->fields().value("name"));
}

void RecordScreen::saveRecord() {
    if (QWidget* focused = m_form->window()->focusWidget())
        focused->clearFocus();
    if (!m_editing) {
        m_editID.reset();
        m_host.render();
        return;
    }
    const Store& store = m_host.shop();
    Store changed;
    try {
        const FormValues values = valuesOf(m_form);
        changed =
            m_section == Section::films ? savingFilm(store, values, m_editID) : savingCustomer(store, values, m_editID);
    } catch (const FilmCSVError& refusal) {
        m_host.alert(refusal.title(), refusal.description());
        return;
    }
    if (!m_host.commit(changed))
        return;
    m_editID.reset();
    ScreenHost& host = m_host; // the redraw deletes this screen
    host.render();
    host.focusList();
}

void RecordScreen::deleteRecord(ScreenHost& host, int section, const QString& id, std::optional<QString>& editID) {
    const Store& store = host.shop();
    const bool films = section == Section::films;
    if (!(films ? canDeleteFilm(store, id) : canDeleteCustomer(store, id))) {
        host.alert(QStringLiteral("Cadastro em uso"),
                   QStringLiteral("Finalize as locações em aberto antes de apagar este cadastro."));
        return;
    }
    ModalAlert question;
    question.title = QStringLiteral("Apagar cadastro?");
    question.text =
        QStringLiteral("O cadastro sai das listas. O histórico é mantido e pode ser restaurado pelo menu CINEFITA.");
    question.buttons = {QStringLiteral("APAGAR"), QStringLiteral("CANCELAR")};
    if (host.styledModal(std::move(question)) != firstButtonAnswer)
        return;
    if (!host.commit(films ? markingFilmDeleted(store, id, true) : markingCustomerDeleted(store, id, true)))
        return;
    editID.reset();
    host.render();
}

void RecordScreen::restoreRecord(ScreenHost& host) {
    const Store& store = host.shop();
    const auto answers = host.form(
        QStringLiteral("Restaurar cadastro"),
        {{QStringLiteral("TIPO: FILME OU CLIENTE"), QStringLiteral("FILME")}, {QStringLiteral("CÓDIGO"), QString()}});
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
        host.alert(QStringLiteral("Não encontrado"), QStringLiteral("Confira tipo e código do cadastro apagado."));
        return;
    }
    if (host.commit(*restored))
        host.render();
}
