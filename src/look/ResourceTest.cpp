#include "Modes.h"

#include <cstdio>

int runResourceTest(int, char**) {
    std::fputs("resource test not built yet\n", stderr);
    return 1;
}
