#include "screens/HelpScreen.h"

#include "screens/ScreenHost.h"

#include <QLabel>
#include <QStringList>

void HelpScreen::show(ScreenHost& host) {
    static const QStringList lines = {
        QStringLiteral("╔════ CINEFITA • CLUBE VHS ════╗"),
        QStringLiteral("[F1] CADASTRAR FITA  •  [F2] CLIENTES"),
        QStringLiteral("[F3] ALUGAR  •  [F4] LISTA DE FILMES  •  [F5] LOCADOS  •  [F6] RELATÓRIOS"),
        QStringLiteral("[F7] SUGESTÃO DA CASA  •  [F9] AJUDA  •  [ESC] SAIR"),
        QStringLiteral("TAB / SHIFT+TAB: CAMPOS  •  SETAS: MENU / LISTAS"),
        QStringLiteral("ENTER: SALVAR CADASTRO  •  SINOPSE: NOVA LINHA"),
        QStringLiteral("LANÇAMENTO: 24 HORAS  •  ACERVO: 3 DIAS"),
        QStringLiteral("DEVOLVER: FITA REBOBINADA? S/N. NÃO = R$ 1,00"),
        QStringLiteral("ETIQUETAS: 70 × 18 mm, TAMANHO CONFIGURÁVEL"),
        QStringLiteral("CARTEIRINHAS: 85,6 × 54 mm. IMPRIMA EM 100%"),
        QStringLiteral("BANCO SQLITE LOCAL • SEM INTERNET • BACKUP JSON"),
        QStringLiteral("SIMULAÇÃO PARA COLECIONADORES • VALORES SIMBÓLICOS"),
    };
    for (const QString& line : lines)
        host.addBody(host.label(line, 16));
    host.spacer();
}
