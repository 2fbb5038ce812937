#include "ProgramInfo.h"
#include "modes/Modes.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

bool hasOption(int argc, char** argv, const char* option) {
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], option) == 0)
            return true;
    return false;
}

constexpr const char* usage =
    "Uso: cinefita [OPÇÃO]\n"
    "Sem opção, abre a locadora. Vale a primeira opção reconhecida, nesta ordem:\n"
    "  --self-test          confere regras, armazenamento, CSV e páginas de impressão\n"
    "  --editing-test       confere telas e digitação numa janela que não aparece\n"
    "  --resource-test      confere a fonte embutida e o ícone da fita\n"
    "  --preview            com CINEFITA_DATA_DIR definida, grava uma imagem PNG da janela\n"
    "  --print-fixtures DIR grava duas páginas de impressão de exemplo na pasta DIR\n"
    "  --version            mostra a versão\n"
    "  --help               mostra esta ajuda\n"
    "\n"
    "Variáveis de ambiente:\n"
    "  CINEFITA_DATA_DIR      pasta dos dados no lugar da pasta do usuário\n"
    "  CINEFITA_PREVIEW_PATH  arquivo da imagem de --preview (padrão: CINEFITA-CRT.png na pasta temporária)\n"
    "  CINEFITA_PREVIEW_HOME  com qualquer valor, --preview mostra a tela inicial\n"
    "  CINEFITA_FONT_PATH     arquivo da fonte, se a fonte embutida faltar\n";

} // namespace

// The first option found in this order wins; anything else on the line is ignored.
int main(int argc, char** argv) {
    if (hasOption(argc, argv, "--self-test"))
        return runSelfTest(argc, argv);
    if (hasOption(argc, argv, "--editing-test"))
        return runEditingTest(argc, argv);
    if (hasOption(argc, argv, "--resource-test"))
        return runResourceTest(argc, argv);
    const char* dataDir = std::getenv("CINEFITA_DATA_DIR");
    if (hasOption(argc, argv, "--preview") && dataDir != nullptr)
        return runApplication(argc, argv, true);
    if (hasOption(argc, argv, "--print-fixtures"))
        return runPrintFixtures(argc, argv, argv[argc - 1]);
    // Plain text only: no application object, so no window and no data folder.
    if (hasOption(argc, argv, "--version")) {
        std::fputs("CINEFITA " CINEFITA_VERSION "\n", stdout);
        return 0;
    }
    if (hasOption(argc, argv, "--help")) {
        std::fputs(usage, stdout);
        return 0;
    }
    return runApplication(argc, argv, false);
}
