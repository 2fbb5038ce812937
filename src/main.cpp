#include "Modes.h"

#include <cstdlib>
#include <cstring>

namespace {

bool hasOption(int argc, char** argv, const char* option) {
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], option) == 0)
            return true;
    return false;
}

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
    return runApplication(argc, argv, false);
}
