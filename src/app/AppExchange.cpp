#include "app/App.h"

#include "exchange/FilmCSV.h"
#include "exchange/ScreenExport.h"
#include "files/FileWriting.h"
#include "lists/RecordSaving.h"
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
        imported = importFilmsCSV(decodedCSVText(readWholeFile(path)), store);
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
    if (section == Section::films && screen.formView == nullptr) {
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
    saveExport(csv(table), csvExportFileName(section == Section::reports));
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
        writeFileAtomically(path, text.toUtf8());
    } catch (const FilmCSVError& error) {
        alert(QStringLiteral("Falha na exportação"), error.description());
        return;
    }
    status->setText(exportedStatus(path));
}
