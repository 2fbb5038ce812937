#include "app/App.h"

#include "exchange/BackupRestore.h"
#include "exchange/FilmCSV.h"
#include "exchange/ScreenExport.h"
#include "lists/RecordSaving.h"
#include "look/DOSProgress.h"
#include "look/DOSSearchField.h"
#include "records/FilmCSVError.h"
#include "records/StoreJSON.h"

#include <QLabel>

void App::importFilmCSV() {
    const QString path = seams.chooseOpenFile(QStringLiteral("IMPORTAR CSV DE FILMES"), QString());
    if (path.isEmpty())
        return;
    Store imported;
    try {
        // Gone before the commit and any alert, so the status line is back by then.
        DOSProgress progress(status, QStringLiteral("IMPORTANDO CSV"));
        imported = importFilmCSVFile(path, store, progress.callback());
    } catch (const FilmCSVError& error) {
        alert(QStringLiteral("CSV não importado"), error.description());
        return;
    }
    const qsizetype count = imported.films.size() - store.films.size();
    if (!commit(imported))
        return;
    selectedGenre.reset();
    search->setText(QString());
    render();
    alert(QStringLiteral("Importação concluída"), QString::number(count) + QStringLiteral(" filme(s) cadastrado(s)."));
}

void App::exportCSV() {
    QList<QStringList> table;
    if (section == Section::films && screen.formView == nullptr && screen.history == nullptr) {
        // The film list goes out in the layout the import reads back, exactly the films listed.
        rows();
        QList<Film> listed;
        for (const QString& id : filteredIDs)
            if (const std::optional<Film> found = film(id))
                listed.append(*found);
        table = filmExportTable(listed);
    } else {
        table.append(columns());
        table.append(rows());
    }
    QString text;
    {
        DOSProgress progress(status, QStringLiteral("EXPORTANDO CSV"));
        text = csv(table, progress.callback());
    }
    saveExport(text, csvExportFileName(section == Section::reports));
}

void App::backup() {
    QString text;
    try {
        text = backupText(store);
    } catch (const FilmCSVError& error) {
        alert(QStringLiteral("Falha no backup"), error.description());
        return;
    }
    saveExport(text, QString::fromLatin1(backupFileName));
}

void App::saveExport(const QString& text, const QString& fileName) {
    const QString path = seams.chooseSaveFile(QStringLiteral("Salvar"), fileName, QString());
    if (path.isEmpty())
        return;
    try {
        DOSProgress progress(status, QStringLiteral("GRAVANDO ARQUIVO"));
        writeExportFile(path, text, progress.callback());
    } catch (const FilmCSVError& error) {
        alert(QStringLiteral("Falha na exportação"), error.description());
        return;
    }
    status->setText(exportedStatus(path));
}

// A backup read back in place of the whole store, after the operator has seen
// what replaces what. One commit: the store replaced stays in the database as
// the previous state.
void App::restoreBackup() {
    const QString path = seams.chooseOpenFile(QStringLiteral("RESTAURAR BACKUP"), QString());
    if (path.isEmpty())
        return;
    Store restored;
    try {
        restored = restoredStoreFromFile(path);
    } catch (const FilmCSVError& error) {
        alert(QString::fromUtf8(restoreFailedTitle), error.description());
        return;
    }
    ModalAlert question;
    question.title = QString::fromUtf8(restoreQuestionTitle);
    question.text = restoreQuestion(store, restored);
    question.buttons = {QStringLiteral("RESTAURAR"), QStringLiteral("CANCELAR")};
    if (styledModal(std::move(question)) != firstButtonAnswer)
        return;
    if (!commit(restored))
        return;
    // Records on show, a remembered genre or a chosen film may not exist in the restored store.
    selectedGenre.reset();
    rentalFilm.reset();
    rentalCustomer.reset();
    if (!showingSplash)
        navigate(section);
}
