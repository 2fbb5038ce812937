#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

class DOSButton;
class RecordForm;
class ScreenHost;

// A film's or a customer's record: its form, shown only until EDITAR (a new
// record opens editable), and the commands on it. Owns its form and lives as long
// as it; the record being edited (editID) is the controller's.
class RecordScreen : public QObject {
    Q_OBJECT
public:
    struct Printing {
        std::function<void()> card;   // IMPRIMIR CARTEIRINHA, customers
        std::function<void()> labels; // ETIQUETAS, films
    };

    using History = std::function<void(const QString& id)>; // HISTÓRICO: the record's rentals

    // Builds the record's rows and actions into the host's body; id none: a new record.
    RecordScreen(ScreenHost& host, int section, const std::optional<QString>& id, std::optional<QString>& editID,
                 Printing printing, History history);

    RecordForm* formView() const { return m_form; }
    const QList<DOSButton*>& tabs() const { return m_tabs; }

    void enableEdit();
    void saveRecord();

    // Marks the record removed after the operator confirms; refused while a tape of it is out.
    static void deleteRecord(ScreenHost& host, int section, const QString& id, std::optional<QString>& editID);
    // The restore command of the menu: a removed record found by kind and code.
    static void restoreRecord(ScreenHost& host);

private:
    ScreenHost& m_host;
    int m_section;
    std::optional<QString>& m_editID;
    RecordForm* m_form = nullptr;
    QList<DOSButton*> m_tabs;
    bool m_editing = false;
};
