#include <cstdio>

int main() {
    std::puts("CINEFITA: a janela do programa ainda não foi construída.");
    return 0;
}
