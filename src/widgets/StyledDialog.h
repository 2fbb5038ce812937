#pragma once

#include "widgets/ModalAlert.h"

#include <QDialog>
#include <QList>

class DOSButton;
class QLabel;
class WrappingSynopsisView;

// Every message, question and small form: a navy panel with a green frame, the
// tape icon, the title, the accessory (long text box, form fields) and a row of
// DOS buttons. Answers are firstButtonAnswer + the button's index, or abortAnswer;
// closing the window while it runs is an abort.
class StyledDialog : public QDialog {
    Q_OBJECT

public:
    explicit StyledDialog(ModalAlert alert, QWidget* parent = nullptr);

    static int response(int index) { return firstButtonAnswer + index; }

    // Runs modally with the key monitor in place; afterwards the dialog is hidden.
    int run();
    // The action of every button: end editing, then answer with its index.
    void finish(DOSButton* button);

    const QString& title() const { return m_title; }
    const QList<DOSButton*>& buttons() const { return m_buttons; }
    const QList<QWidget*>& ring() const { return m_ring; } // Tab order: accessory controls, then buttons
    QWidget* accessory() const { return m_accessory; }
    WrappingSynopsisView* textBox() const;
    QLabel* iconLabel() const { return m_icon; }

    bool eventFilter(QObject* watched, QEvent* event) override; // the key monitor

public slots:
    void reject() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    bool isRewindQuestion() const;

    QString m_title;
    QWidget* m_accessory = nullptr;
    QWidget* m_initialFocus = nullptr;
    QLabel* m_icon = nullptr;
    QList<DOSButton*> m_buttons;
    std::optional<int> m_escapeButton;
    QList<QWidget*> m_ring;
};
