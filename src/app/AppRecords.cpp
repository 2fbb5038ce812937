#include "app/App.h"

#include "look/DOSButton.h"
#include "look/DOSField.h"
#include "look/DOSTable.h"
#include "screens/RecordScreen.h"
#include "widgets/RecordForm.h"
#include "widgets/WrappingSynopsisView.h"

#include <QLayout>
#include <QMainWindow>
#include <functional>

// The record screens are a class of their own; the controller clears the body,
// lights the menu entry, builds the screen and hands its form and tabs to the key
// map and the ring.

void App::recordScreen(std::optional<QString> id) {
    if (window != nullptr)
        if (QWidget* focused = window->focusWidget())
            focused->clearFocus();
    clearScreen();

    const bool creatingFilm = section == Section::films && !id;
    for (DOSButton* entry : navButtons) {
        entry->setOn(entry->tag() == (creatingFilm ? int(MenuCommand::newFilm) : section));
        entry->update();
    }
    record = new RecordScreen(*this, section, id, editID,
                              {std::bind_front(&App::printMembers, this), std::bind_front(&App::printLabels, this)},
                              std::bind_front(&App::historyScreen, this));
    screen.formView = record->formView();
    screen.tabs = record->tabs();
    focus(screen.formView->fields().value("name"));
}

void App::enableEdit() {
    if (record != nullptr)
        record->enableEdit();
}

void App::saveRecord() {
    if (record != nullptr)
        record->saveRecord();
}

void App::deleteSelected() {
    std::optional<QString> id = screen.formView != nullptr ? editID : selected();
    if (id)
        RecordScreen::deleteRecord(*this, section, *id, editID);
}

void App::restoreRecord() {
    RecordScreen::restoreRecord(*this);
}

void App::focusList() {
    focus(table);
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
