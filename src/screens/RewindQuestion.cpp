#include "screens/RewindQuestion.h"

#include "records/MoneyText.h"
#include "screens/ScreenHost.h"
#include "widgets/ModalAlert.h"

std::optional<bool> askRewound(ScreenHost& host, const QString& text) {
    ModalAlert question;
    question.title = QStringLiteral("FITA FOI REBOBINADA? [S/N]");
    question.text = text;
    question.buttons = {QStringLiteral("[S] SIM"), QStringLiteral("[N] NÃO"), QStringLiteral("CANCELAR")};
    const int answer = host.styledModal(std::move(question));
    if (answer != firstButtonAnswer && answer != firstButtonAnswer + 1)
        return std::nullopt;
    return answer == firstButtonAnswer;
}

QString rewindQuestionText(const QString& title, qint64 fine) {
    return title + QStringLiteral("\nMulta por atraso: ") + money(fine) +
           QStringLiteral("\n[N] aplica taxa simbólica de R$ 1,00.\nConfirmar registra a devolução.");
}
