#include "app/App.h"

#include "screens/CashBook.h"

#include "lists/RecordSaving.h"
#include "records/Codes.h"
#include "records/MoneyText.h"
#include "records/RentalRules.h"
#include "records/Search.h"

#include <QLabel>
#include <QMainWindow>

// The operator's small commands: a cash-book line, the shop's name, the house
// suggestion, the help screen and leaving the program.

namespace {

constexpr qsizetype longestShopName = 60;

QString suggestionText(const Film& film) {
    const QString year = film.year ? QString::number(*film.year) : QStringLiteral("ANO NÃO INFORMADO");
    const bool hasSynopsis = film.sinapse && !film.sinapse->trimmed().isEmpty();
    return QStringLiteral("Hoje eu recomendo: ") + film.title + QLatin1Char('\n') + inventoryCode(film.code) +
           QStringLiteral(" • ") + year + QLatin1Char('\n') + film.genre + QStringLiteral("\n\n") +
           (hasSynopsis ? *film.sinapse : QStringLiteral("Pegue a pipoca e boa sessão!"));
}

} // namespace

void App::cashEntry() {
    CashBook::cashEntry(*this);
}

void App::configureName() {
    const std::optional<QStringList> typed =
        form(QStringLiteral("Nome da locadora"), {{QStringLiteral("NOME"), locadoraName()}});
    if (!typed)
        return;
    const QString name = typed->first();
    if (name.isEmpty() || visibleLength(name) > longestShopName)
        return;
    Store changed = store;
    changed.locadoraName = name;
    if (!commit(changed))
        return;
    // Only the brand and the title change: the screen keeps what is being typed.
    brand->setText(locadoraName().toUpper());
    window->setWindowTitle(QStringLiteral("CINEFITA — ") + locadoraName());
}

void App::suggestHouse() {
    const QList<Film> onShelf = filmsOnShelf(store);
    if (onShelf.isEmpty()) {
        alert(QStringLiteral("Sugestão da Casa"), QStringLiteral("Não há fitas disponíveis no acervo."));
        return;
    }
    alert(QStringLiteral("[F7] SUGESTÃO DA CASA"), suggestionText(onShelf.at(seams.randomIndex(onShelf.size()))));
}

void App::exitProgram() {
    ModalAlert question;
    question.title = QStringLiteral("SAIR DO CINEFITA?");
    question.text = QStringLiteral("Os dados já salvos permanecem no banco local.");
    question.buttons = {QStringLiteral("SAIR"), QStringLiteral("VOLTAR")};
    if (styledModal(std::move(question)) == firstButtonAnswer)
        seams.terminate();
}
