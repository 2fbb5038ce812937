#include "screens/RentalScreen.h"

#include "look/DOSButton.h"
#include "look/DOSField.h"
#include "records/Codes.h"
#include "records/DateText.h"
#include "records/MoneyText.h"
#include "screens/RentalRows.h"
#include "screens/ScreenHost.h"
#include "widgets/MatchList.h"
#include "widgets/RecordForm.h"

#include <QKeyEvent>
#include <QLabel>
#include <QTableView>
#include <algorithm>

// Several tapes in one rental: the list under the form, its Delete key, and the
// rental of them all in one commit.

QWidget* RentalScreen::basketList() const {
    return m_basket->list();
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
    const std::optional<Film> chosen = storedFilm(tape.film);
    if (!chosen)
        return;
    m_film = chosen->id;
    m_dropped.reset();
    m_typedChoice = false;
    setCode(tape.copy ? copyCode(chosen->code, *tape.copy) : filmCode(*chosen));
    setField(QStringLiteral("film"), chosen->title);
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
    setField(QStringLiteral("film"), QString());
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
    setField(QStringLiteral("clientCode"), customerCode(customer));
    setField(QStringLiteral("client"), customer.name);
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
        items.append({line.copyCode, RentalRows::tape(line)});
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
    commitRented(store, basketRentedStore(store, {.tapes = m_tapes,
                                                  .customer = customerID,
                                                  .start = start.value_or(m_host.now()),
                                                  .finePerDay = finePerDay.value_or(0)}));
}
