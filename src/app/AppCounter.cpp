#include "app/App.h"

#include "app/ScanFilter.h"
#include "look/DOSSearchField.h"
#include "records/FilmCSVError.h"
#include "screens/RentalScreen.h"
#include "screens/RewindQuestion.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTextCursor>
#include <memory>

// The counter by barcode: a scan, wherever it finds the operator, returns a tape
// that is out, starts a rental of a tape on the shelf or for a member card, or
// says why the code was refused. The keys of the scan leave nothing behind.

namespace {

// The field a scan was typed into, as it was before its first key.
struct ScanSnapshot {
    QPointer<QWidget> field;
    QString text;
    int cursor = 0;
    QPointer<RentalScreen> rental;
    RentalScreen::Typed rentalTyped;
    QString search;
};

template <typename... Cases> struct Overloaded : Cases... { using Cases::operator()...; };

} // namespace

void App::installScanFilter() {
    auto snapshot = std::make_shared<std::optional<ScanSnapshot>>();
    ScanFilter::Hooks hooks;
    hooks.focused = [this]() -> QWidget* {
        QWidget* focused = window != nullptr ? window->focusWidget() : nullptr;
        return focused != nullptr ? focused : window;
    };
    hooks.runStarts = [this, snapshot](QWidget* field) {
        snapshot->reset();
        if (field == nullptr)
            return;
        ScanSnapshot taken{.field = field, .rental = rental, .search = search->text()};
        if (auto* line = qobject_cast<QLineEdit*>(field)) {
            taken.text = line->text();
            taken.cursor = line->cursorPosition();
        } else if (auto* text = qobject_cast<QPlainTextEdit*>(field)) {
            taken.text = text->toPlainText();
            taken.cursor = text->textCursor().position();
        }
        if (rental != nullptr)
            taken.rentalTyped = rental->typed();
        *snapshot = std::move(taken);
    };
    hooks.scanned = [this, snapshot](const QString& code) {
        // Put back what the scan's characters changed, as if they had never come.
        if (std::optional<ScanSnapshot> taken = std::exchange(*snapshot, std::nullopt); taken && taken->field) {
            if (taken->rental != nullptr)
                taken->rental->restore(taken->rentalTyped);
            if (auto* line = qobject_cast<QLineEdit*>(taken->field.data())) {
                line->setText(taken->text);
                line->setCursorPosition(taken->cursor);
            } else if (auto* text = qobject_cast<QPlainTextEdit*>(taken->field.data())) {
                text->setPlainText(taken->text);
                QTextCursor cursor = text->textCursor();
                cursor.setPosition(taken->cursor);
                text->setTextCursor(cursor);
            }
            if (taken->field == search && section != Section::rental)
                searchChanged();
        }
        actOnScan(code);
    };
    scanFilter = new ScanFilter(std::move(hooks), this);
}

void App::actOnScan(const QString& code) {
    if (window == nullptr || QApplication::activeModalWidget() != nullptr)
        return;
    const ScanTarget target = scanReader.read(store, code, now());
    if (showingSplash)
        enterProgram();
    const auto openRental = [this] {
        if (section != Section::rental || rental == nullptr)
            navigate(Section::rental);
        return rental;
    };
    std::visit(Overloaded{
                   [this](const ScanReturn& out) { returnByScan(out); },
                   [&openRental](const ScanRent& shelf) {
                       if (RentalScreen* screen = openRental())
                           screen->takeTape(shelf.film, shelf.copy);
                   },
                   [this, &openRental](const ScanCustomer& card) {
                       // The debt is seen before anything is rented.
                       if (!card.late.isEmpty())
                           alert(lateRentalsTitle(card), lateRentalsText(card));
                       if (RentalScreen* screen = openRental())
                           screen->chooseCustomer(card.customer);
                   },
                   [&openRental](const ScanFilm& film) {
                       if (RentalScreen* screen = openRental())
                           screen->takeTape(film.film, std::nullopt);
                   },
                   [this](const RuleRefusal& refusal) { alert(refusal.title, refusal.text); },
               },
               target);
}

// The tape comes back at once: the rewind question, then the return; the operator
// stays where he was, ready for the next tape.
void App::returnByScan(const ScanReturn& target) {
    const std::optional<bool> rewound = askRewound(*this, scanReturnText(target));
    if (!rewound)
        return;
    Store changed;
    try {
        changed = returnedStore(store, target.rental.id, *rewound, now());
    } catch (const FilmCSVError& error) {
        alert(QStringLiteral("Devolução não salva"), error.description());
        return;
    }
    const QPointer<QWidget> focused = window->focusWidget();
    if (!commit(changed))
        return;
    // A form keeps what is typed in it; the lists show the tape back on the shelf.
    if (screen.formView == nullptr) {
        render();
        if (focused != nullptr && focused->isVisible())
            focus(focused);
    }
    rememberCounterAct(returnAct(target.rental.id));
    status->setText(returnedStatus(target));
}
