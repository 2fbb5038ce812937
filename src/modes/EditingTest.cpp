#include "modes/EditingChecks.h"
#include "modes/ModeChecks.h"
#include "modes/Modes.h"

#include "storage/LocalDatabase.h"

#include <QTemporaryDir>

// The screens driven as the operator drives them: key presses go to the focused
// widget of the real window through the application's key filter, dialogs are
// answered by their own keys. Runs on a temporary data folder.

namespace {

const Instant now{800000000};

Store sampleShop() {
    Store store;
    store.films = {
        Film{.id = "F1",
             .title = "TUBARÃO",
             .genre = "Suspense",
             .copies = 2,
             .price = 500,
             .code = 1,
             .sinapse = editingTest::longSynopsis},
        Film{.id = "F2", .title = "ALIEN", .genre = "Terror", .copies = 1, .price = 400, .code = 2},
    };
    store.customers = {
        Customer{.id = "C1", .name = "JOÃO DA SILVA", .phone = "(11) 5555-0101", .code = 1},
        Customer{.id = "C2", .name = "MARIA", .phone = "(11) 5555-0102", .code = 2},
    };
    store.rentals = {Rental{.id = "R1",
                            .film = "F1",
                            .customer = "C1",
                            .start = now.plusSeconds(-9 * 86400),
                            .due = now.plusSeconds(-6 * 86400),
                            .returned = now.plusSeconds(-6 * 86400),
                            .price = 500,
                            .finePerDay = 200,
                            .fine = 0,
                            .rewound = true,
                            .rewindFee = 0,
                            .copy = 1}};
    store.reportRentalBaseline = 0; // the reports count every rental ever made
    return store;
}

} // namespace

int runEditingTest(int argc, char** argv) {
    using namespace editingTest;
    drawOffscreenWithoutDisplay();
    QApplication application(argc, argv);
    QTemporaryDir dir; // never the operator's own data
    if (!dir.isValid()) {
        std::fputs("Temporary data folder unavailable\n", stderr);
        return 1;
    }
    const QString databasePath = dir.filePath(QStringLiteral("cinefita.sqlite"));
    QStringList printed;
    try {
        LocalDatabase(databasePath).save(sampleShop());
        App app;
        app.folder = dir.path();
        app.seams.windowOnScreen = false;
        app.seams.clock = [] {
            return now;
        };
        app.seams.randomIndex = [](qsizetype) {
            return qsizetype(0);
        };
        app.seams.terminate = [] {
        };
        app.seams.openPrintPage = [&printed](const QString& path) {
            printed.append(path);
        };
        app.launch();
        check(app.window != nullptr, "The window was not built");
        Operator op(app);
        op.key(Qt::Key_Return);
        check(!app.showingSplash, "Enter does not leave the splash");

        copyAndPaste(app, op);
        synopsisWraps(app, op);
        enterRules(app, op);
        liveSearch(app, op);
        rentalClear(app, op, databasePath);
        menuArrows(app, op);
        customerForm(app, op);
        boundedDialogs(app, op);
        recordButtons(app, op, printed);
        typingAndLookups(app, op);
    } catch (const CheckFailed& failed) {
        std::fprintf(stderr, "%s\n", failed.message);
        return 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
