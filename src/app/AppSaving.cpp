#include "app/App.h"

#include "look/DOS.h"
#include "records/FilmCSVError.h"
#include "records/RentalRules.h"
#include "storage/LocalDatabase.h"
#include "widgets/ModalAlert.h"
#include "widgets/TextLook.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTimer>
#include <algorithm>

// Saving a changed store, and what the shell keeps watching: the focused text's
// colours, the window's close button and the blinking debt alert.

namespace {

const QColor systemRed(255, 59, 48);

} // namespace

// ---- Saving -------------------------------------------------------------------

bool App::commit(const Store& changed) {
    std::optional<QString> failure;
    if (database == nullptr) {
        failure = QStringLiteral("Banco local não iniciado.");
    } else {
        try {
            database->save(changed);
        } catch (const FilmCSVError& error) {
            failure = error.description();
        } catch (const std::exception& error) {
            failure = QString::fromUtf8(error.what());
        }
    }
    if (failure) {
        alert(QStringLiteral("Não foi possível salvar"), *failure);
        return false;
    }
    store = changed;
    // The log is copied into the file a moment later, outside the operator's wait.
    QTimer::singleShot(300, this, [this] {
        if (database != nullptr)
            database->checkpoint();
    });
    if (status != nullptr)
        status->setText(QStringLiteral("SALVO NO BANCO LOCAL"));
    return true;
}

// ---- Editing, closing, blinking -----------------------------------------------

void App::observeEditing() {
    if (editingObserver)
        return;
    editingObserver = connect(qApp, &QApplication::focusChanged, this, [](QWidget*, QWidget* now) {
        if (now == nullptr || !isTextView(now))
            return;
        QPalette colours = now->palette();
        for (auto group : {QPalette::Active, QPalette::Inactive}) {
            // The caret is drawn in the text colour; a field without its own takes the screen's.
            if (!now->testAttribute(Qt::WA_SetPalette))
                colours.setColor(group, QPalette::Text, DOS::text());
            colours.setColor(group, QPalette::Highlight, DOS::yellow());
            colours.setColor(group, QPalette::HighlightedText, DOS::ink());
        }
        now->setPalette(colours);
    });
}

bool App::windowShouldClose(QWidget* closing) {
    if (closing != nullptr && closing == QApplication::activeModalWidget()) {
        if (auto* dialog = qobject_cast<QDialog*>(closing))
            dialog->done(abortAnswer);
        return false;
    }
    return true;
}

void App::updateDebtAlert() {
    const Instant now = seams.clock();
    const bool late = std::any_of(store.rentals.cbegin(), store.rentals.cend(),
                                  [&now](const Rental& rental) { return isLate(rental, now); });
    blinkOn = !blinkOn;
    if (status == nullptr)
        return;
    if (late) {
        status->setText(QStringLiteral("ATENÇÃO: CLIENTE EM DÉBITO"));
        setForeground(status, QPalette::WindowText, blinkOn ? systemRed : DOS::blue());
    } else {
        setForeground(status, QPalette::WindowText, DOS::text());
    }
}
