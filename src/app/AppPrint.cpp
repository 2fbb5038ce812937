#include "app/App.h"

#include "files/FileWriting.h"
#include "lists/RecordSaving.h"
#include "print/Labels.h"
#include "print/MatrixReport.h"
#include "print/MemberCard.h"
#include "print/PrintFiles.h"
#include "records/Search.h"

#include <algorithm>

// Every printed page is written to the print folder and handed to the system's
// viewer; the operator prints from there.

void App::openPrint(const QString& html, const QString& name) {
    QString path;
    try {
        path = writePrintPage(folder, html, name);
    } catch (const FilmCSVError& error) {
        alert(QStringLiteral("Falha na impressão"), error.description());
        return;
    }
    seams.openPrintPage(path);
}

void App::printLabels() {
    const std::optional<Film> film = section == Section::films && editID ? this->film(*editID) : std::nullopt;
    if (!film) {
        alert(QStringLiteral("Etiquetas"), QStringLiteral("Abra a página de uma fita cadastrada."));
        return;
    }
    const auto answers =
        form(QStringLiteral("TAMANHO DA ETIQUETA (mm)"), labelFormFields(*film), QStringLiteral("IMPRIMIR"));
    if (!answers)
        return;
    // A size that does not fit, a place off the sheet or copies the film does not have print nothing, without a word.
    const std::optional<LabelSheet> sheet = chosenLabelSheet(*answers, *film);
    if (!sheet)
        return;
    openPrint(labelDocument(*film, locadoraName(), *sheet), QString::fromLatin1(labelsPageName));
}

std::optional<Customer> App::memberToPrint() const {
    if (section != Section::customers || !editID)
        return std::nullopt;
    const QList<Customer> active = activeCustomers(store);
    const auto found = std::find_if(active.cbegin(), active.cend(),
                                    [this](const Customer& customer) { return customer.id == *editID; });
    return found != active.cend() ? std::optional<Customer>(*found) : std::nullopt;
}

void App::printMembers() {
    const std::optional<Customer> customer = memberToPrint();
    if (!customer) {
        alert(QStringLiteral("Carteirinha"),
              QStringLiteral("Abra a página de um cliente cadastrado para imprimir sua carteirinha."));
        return;
    }
    openPrint(memberDocument({*customer}, locadoraName()), memberPageName(*customer));
}

void App::printReport() {
    const QString text = matrixReportText(locadoraName(), seams.clock(), rows());
    openPrint(matrixReportDocument(text), QString::fromLatin1(reportPageName));
}
