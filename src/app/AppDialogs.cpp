#include "app/App.h"

#include "lists/RecordSaving.h"
#include "look/DOS.h"
#include "look/DOSField.h"
#include "widgets/StyledDialog.h"
#include "widgets/WrappingSynopsisView.h"

#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <QScrollBar>
#include <algorithm>
#include <memory>

namespace {

constexpr int boxWidth = 500;
constexpr int rowHeight = 25;
constexpr int charactersPerRow = 48;
constexpr int gap = 12;
constexpr int formWidth = 420;
constexpr int formBand = 60;

int heightOf(QWidget* view) {
    return view->testAttribute(Qt::WA_Resized) ? view->height() : view->sizeHint().height();
}

} // namespace

int App::styledModal(ModalAlert alert) {
    prepareModalText(alert);
    QPointer<StyledDialog> dialog = new StyledDialog(std::move(alert), window);
    const int answer = dialog->run();
    delete dialog.data();
    reactivateWindow();
    return answer;
}

// Without a window manager nothing hands the activation back when a dialog closes,
// and the menu's Ctrl shortcuts only reach an active window.
void App::reactivateWindow() {
    if (window != nullptr && window->isVisible())
        window->activateWindow();
}

void App::prepareModalText(ModalAlert& alert) {
    if (alert.text.isEmpty())
        return;
    std::unique_ptr<QWidget> existing = std::move(alert.accessory);
    const int existingHeight = existing != nullptr ? heightOf(existing.get()) : 0;

    qsizetype rows = 0;
    for (const QString& line : alert.text.split(QLatin1Char('\n'))) {
        const qsizetype characters = visibleLength(line);
        rows += std::max<qsizetype>(1, (characters + charactersPerRow - 1) / charactersPerRow);
    }
    const int boxHeight = int(std::clamp<qsizetype>(rows * rowHeight + 12, 70, 280));

    auto container = std::make_unique<QWidget>();
    container->setFixedSize(boxWidth, boxHeight + (existingHeight > 0 ? existingHeight + gap : 0));

    auto* box = new WrappingSynopsisView(container.get());
    box->setGeometry(0, 0, boxWidth, boxHeight);
    box->setReadOnly(true);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    // Selectable with the mouse, but the keyboard starts on the fields or the buttons.
    box->setFocusPolicy(Qt::ClickFocus);
    box->setFrameShape(QFrame::Box);
    box->setFrameShadow(QFrame::Plain);
    QPalette line = box->palette();
    line.setColor(QPalette::WindowText, DOS::border()); // the frame's colour, not the text's
    box->setPalette(line);
    box->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    box->setPlainText(alert.text);

    if (existing != nullptr) {
        const QSize size(existing->testAttribute(Qt::WA_Resized) ? existing->size() : existing->sizeHint());
        QWidget* below = existing.release(); // the container owns it from here
        below->setParent(container.get());
        below->setGeometry(0, boxHeight + gap, size.width(), size.height());
    }
    alert.text.clear();
    alert.accessory = std::move(container);
}

void App::alert(const QString& title, const QString& text) {
    ModalAlert message;
    message.title = title;
    message.text = text;
    styledModal(std::move(message));
}

std::optional<QStringList> App::form(const QString& title, const QList<QPair<QString, QString>>& fields,
                                     const QString& ok) {
    ModalAlert question;
    question.title = title;
    question.buttons = {ok, QStringLiteral("CANCELAR")};

    auto container = std::make_unique<QWidget>();
    container->setFixedSize(formWidth, int(fields.size()) * formBand);
    // The dialog and its fields are gone when styledModal returns; keep their texts here.
    auto texts = std::make_shared<QStringList>();
    for (int i = 0; i < fields.size(); ++i) {
        QLabel* caption = label(fields[i].first, 14);
        caption->setParent(container.get());
        caption->setGeometry(0, i * formBand + 4, formWidth, 24);
        auto* field = new DOSField(fields[i].second, container.get());
        field->setGeometry(0, i * formBand + 30, formWidth, 28);
        texts->append(fields[i].second);
        connect(field, &QLineEdit::textChanged, field, [texts, i](const QString& text) { (*texts)[i] = text; });
        if (question.initialFocus == nullptr)
            question.initialFocus = field;
    }
    question.accessory = std::move(container);

    if (styledModal(std::move(question)) != firstButtonAnswer)
        return std::nullopt;
    QStringList answers;
    for (const QString& text : *texts)
        answers.append(text.trimmed());
    return answers;
}
