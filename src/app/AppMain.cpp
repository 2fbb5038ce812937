#include "Modes.h"

#include <cstdio>

int runApplication(int, char**, bool) {
    std::puts("CINEFITA: a janela do programa ainda não foi construída.");
    return 0;
}
