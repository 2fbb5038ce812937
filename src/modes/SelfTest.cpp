#include "modes/ModeChecks.h"
#include "modes/Modes.h"
#include "modes/SelfTestChecks.h"

#include "records/FilmCSVError.h"

#include <QCoreApplication>
#include <cstdio>
#include <functional>

// Checks a shop can run on its own machine to see that storage, rules, CSV and
// print pages work there. The project's real tests live in tests/.

int runSelfTest(int argc, char** argv) {
    using namespace selfTest;
    QCoreApplication application(argc, argv);
    try {
        const ScratchFolder scratch;
        const std::function<void()> groups[] = {
            [&] { persistenceRentalsLabelsAndCards(scratch); },
            [] { csvImport(); },
            [&] { sinapseAndGenres(scratch); },
            [] { ordering(); },
            [] { recordsDatesAndHistory(); },
            [&] { migrationSearchAndRoundTrip(scratch); },
        };
        const char* passes[] = {
            "PASS: SQLite persistence, exact rental hours, per-copy stock, physical labels and membership cards",
            "PASS: CSV import BOM, delimiters, quoted multiline fields, prices and atomic duplicate rejection",
            "PASS: long multiline sinapse roundtrip and accent-insensitive genre filter",
            "PASS: Portuguese film/customer alphabetical and code ordering",
            "PASS: expanded records, dates, deletion guards and preserved history",
            "PASS: film code migration and search, DDD formatting,  legacy data migration, custom name persistence, "
            "currency validation, calendar overdue calculation, persistent data round trip",
        };
        for (int i = 0; i < 6; ++i) {
            groups[i]();
            std::puts(passes[i]);
            std::fflush(stdout);
        }
    } catch (const CheckFailed& failed) {
        std::fprintf(stderr, "%s\n", failed.message);
        return 1;
    } catch (const FilmCSVError& error) {
        std::fprintf(stderr, "Start-up loading failed: %s\n", error.what());
        return 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "Unexpected failure: %s\n", error.what());
        return 1;
    }
    return 0;
}
