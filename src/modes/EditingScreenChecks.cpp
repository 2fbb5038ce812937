#include "modes/EditingChecks.h"
#include "modes/ModeChecks.h"

#include "look/DOSButton.h"
#include "look/DOSField.h"
#include "look/DOSSearchField.h"
#include "look/DOSTable.h"
#include "storage/LocalDatabase.h"
#include "widgets/MatchList.h"
#include "widgets/RecordForm.h"

#include <QFile>

namespace editingTest {

namespace {

QString printedText(const QStringList& printed) {
    QFile page(printed.value(printed.size() - 1));
    return page.open(QIODevice::ReadOnly) ? QString::fromUtf8(page.readAll()) : QString();
}

} // namespace

void liveSearch(App& app, Operator& op) {
    op.key(Qt::Key_F2);
    const qsizetype all = app.rows().size();
    op.key(Qt::Key_F, Qt::ControlModifier);
    check(op.focused() == app.search, "Ctrl+F does not reach the search field");
    op.type(QStringLiteral("joao"));
    check(app.rows().size() == 1 && op.rowsText().contains(QStringLiteral("JOÃO DA SILVA")),
          "Search does not find the accented name");
    op.replaceText(QStringLiteral("0002"));
    check(app.rows().size() == 1 && op.rowsText().contains(QStringLiteral("MARIA")), "Search does not find the code");
    op.key(Qt::Key_A, Qt::ControlModifier);
    op.key(Qt::Key_Backspace);
    check(app.rows().size() == all, "Clearing the search does not restore the rows");
    pass("PASS: live search by accented name and code, clearing restores rows");
}

void rentalClear(App& app, Operator& op, const QString& databasePath) {
    const QList<Rental> before = LocalDatabase(databasePath).load()->rentals;
    op.key(Qt::Key_F3);
    op.key(Qt::Key_Right);
    check(op.tabTo(op.field("film")), "Tab never reaches FILME");
    op.type(QStringLiteral("tuba"));
    check(app.screen.filmMatches->isVisible(), "Typing a title does not open the film list");
    op.key(Qt::Key_Down);
    op.key(Qt::Key_Return);
    check(op.focused() == op.field("client"), "Choosing a film does not move on to CLIENTE");
    op.type(QStringLiteral("maria"));
    check(op.tabTo(op.action(QStringLiteral("APAGAR"))), "Tab never reaches APAGAR");
    op.key(Qt::Key_Space);
    for (DOSField* field : app.screen.formView->fields())
        check(field->isReadOnly() || field->text().isEmpty(), "APAGAR left an input filled");
    check(!app.rentalFilm && !app.rentalCustomer, "APAGAR kept the chosen film or customer");
    check(LocalDatabase(databasePath).load()->rentals == before, "APAGAR changed the saved rentals");
    pass("PASS: rental APAGAR clears all inputs without changing saved rentals");
}

void menuArrows(App& app, Operator& op) {
    check(op.tabTo(app.menuHeading), "Tab never reaches the menu heading");
    op.key(Qt::Key_Down);
    check(app.screen.formView != nullptr && app.section == Section::films && app.navButtons.first()->isOn(),
          "Down from the heading does not open the new film form");
    const QList<DOSButton*> entries = app.navButtons;
    check(op.tabTo(app.menuHeading), "Tab never reaches the menu heading again");
    op.key(Qt::Key_Up);
    check(op.focused() == entries.last(), "Up from the heading does not reach the last entry");
    for (int i = 0; i <= entries.size(); ++i) {
        op.key(Qt::Key_Down);
        DOSButton* entry = entries[i % entries.size()]; // past the last: the first again
        check(op.focused() == entry, "Down does not move to the next menu entry");
        if (entry->tag() < MenuCommand::suggestion || entry->tag() == MenuCommand::newFilm)
            check(entry->isOn(), "The lit menu entry is not the one with the focus");
        if (entry->tag() < MenuCommand::suggestion)
            check(app.section == entry->tag(), "The screen does not follow the menu selection");
    }
    op.key(Qt::Key_Up);
    check(op.focused() == entries.last(), "Up on the first entry does not wrap");
    pass("PASS: menu arrows move active yellow selection, change screen and wrap");
}

void boundedDialogs(App& app, Operator& op) {
    for (int key : {int(Qt::Key_F7), 0}) {
        DialogAnswer answer(&DialogAnswer::pressReturn);
        if (key != 0)
            op.key(key);
        else
            app.alert(QStringLiteral("Não foi possível salvar"), longSynopsis);
        check(answer.answered, "No dialog came up");
        check(answer.scrolls, "A long message does not scroll in its box");
        check(answer.seen.height() <= app.window->height() && answer.seen.width() <= app.window->width(),
              "A long message made the dialog larger than the window");
    }
    pass("PASS: long recommendation and error messages use a bounded scrollable popup");
}

void recordButtons(App& app, Operator& op, const QStringList& printed) {
    op.key(Qt::Key_F1);
    check(op.actionTitles() == QStringList{QStringLiteral("SALVAR")} && app.screen.tabs.isEmpty(),
          "The new film form has more than SALVAR, or tabs");
    op.key(Qt::Key_F4);
    check(op.tabTo(app.table), "Tab never reaches the film list");
    while (app.selected() != QStringLiteral("F2") && app.table->currentIndex().row() + 1 < app.rows().size())
        op.key(Qt::Key_Down);
    op.key(Qt::Key_Return);
    check(app.editID == QStringLiteral("F2") && op.action(QStringLiteral("ETIQUETAS")) != nullptr,
          "Enter on the list does not open the film with ETIQUETAS");
    check(op.tabTo(op.action(QStringLiteral("ETIQUETAS"))), "Tab never reaches ETIQUETAS");
    {
        DialogAnswer size(&DialogAnswer::pressReturn);
        op.key(Qt::Key_Return);
        check(size.answered, "ETIQUETAS asks no label size");
    }
    const QString labels = printedText(printed);
    check(labels.contains(QStringLiteral("ALIEN")) && !labels.contains(QStringLiteral("TUBAR")),
          "Labels are not restricted to the opened film");

    op.key(Qt::Key_F2);
    check(op.tabTo(app.table), "Tab never reaches the customer list");
    op.key(Qt::Key_Return);
    check(app.editID && app.screen.tabs.size() == 1, "The opened customer has no card tab");
    const std::optional<Customer> opened = app.customer(*app.editID);
    check(op.tabTo(app.screen.tabs.first()), "Tab never reaches the card tab");
    op.key(Qt::Key_Space);
    const QString card = printedText(printed);
    int named = 0;
    for (const Customer& customer : app.store.customers)
        named += card.contains(customer.name.toHtmlEscaped());
    check(opened && card.contains(opened->name.toHtmlEscaped()) && named == 1,
          "The card is not restricted to the opened customer");
    pass("PASS: labels restricted to individual film; card restricted to opened client and film registration has only "
         "SALVAR, without tabs");
}

} // namespace editingTest
