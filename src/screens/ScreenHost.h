#pragma once

#include "records/Instant.h"
#include "records/Records.h"
#include "widgets/ModalAlert.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

struct CounterAct;
class DOSButton;
class QLabel;
class QWidget;

// What a screen needs of the controller: the store to read, the one way to change
// it, the way to another section, the dialogs, the clock and the body to build in.
// A new screen asks for more here rather than reaching into the controller.
class ScreenHost {
public:
    using Action = std::function<void()>;

    virtual ~ScreenHost() = default;

    virtual const Store& shop() const = 0;
    virtual Instant now() const = 0;
    virtual qsizetype pick(qsizetype count) = 0; // uniform in 0 … count − 1
    virtual bool commit(const Store& changed) = 0;
    virtual void navigate(int section) = 0;
    virtual void render() = 0;
    virtual void focus(QWidget* view) = 0;
    virtual void clearSearch() = 0;
    // The record of the list's selected row; none (after telling the operator) without one.
    virtual std::optional<QString> selected() = 0;
    virtual void showSelected(const QString& id) = 0; // its row selected, the table focused
    virtual void focusList() = 0;                     // the list's table takes the focus
    virtual void addListTable() = 0;                  // the list's table, placed in the body
    virtual void reloadList() = 0;                    // the rows asked for again, the selection cleared

    virtual void alert(const QString& title, const QString& text) = 0;
    virtual std::optional<QStringList> form(const QString& title, const QList<QPair<QString, QString>>& fields,
                                            const QString& ok = QStringLiteral("FINALIZAR")) = 0;
    virtual int styledModal(ModalAlert alert) = 0;

    // A page written to the print folder and opened; a failure is told to the operator.
    virtual void openPrint(const QString& html, const QString& name) = 0;
    // Asks where to save, then writes; a failure is told to the operator.
    virtual void saveExport(const QString& text, const QString& fileName) = 0;
    // Called by every rental and return once saved: F10 prints this act's receipt.
    virtual void rememberCounterAct(const CounterAct& act) = 0;

    // The body of the screen on show, built top to bottom.
    virtual QLabel* label(const QString& text, qreal size = 14) = 0;
    virtual DOSButton* button(const QString& title, Action action) = 0;
    virtual void addBody(QWidget* view, int stretch = 0) = 0;
    virtual void spacer() = 0;
    virtual void actionRow(const QList<QPair<QString, Action>>& items) = 0;
};
