// Prints how long the list table takes to follow a keystroke in the search
// field, on a shop that has run for years: a real key press into the search
// field of an offscreen window, until the table reports its new row count (and
// until it has painted it), median and worst of 50 keystrokes per list.
#include "app/App.h"
#include "look/DOSSearchField.h"
#include "look/DOSTable.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <cstdio>

namespace {

constexpr int filmCount = 10000;
constexpr int customerCount = 5000;
constexpr int rentalCount = 100000;
constexpr int keystrokes = 50;
const Instant now{800000000};

Store yearsOfBusiness() {
    const QStringList firstWords = {"Ação", "Aventura", "Cidade", "Fúria", "Noite", "Mistério", "Corações", "Estrela"};
    const QStringList lastWords = {"Perdida", "Selvagem", "do Sertão", "em Chamas", "Proibida", "Final", "de Aço"};
    const QStringList genres = {"Ação, Aventura", "Drama", "Comédia", "Terror", "ficcao cientifica, Ação", "Cult"};
    Store store;
    for (int i = 0; i < filmCount; ++i)
        store.films.append(Film{.id = QStringLiteral("F-%1").arg(i),
                                .title = QStringLiteral("%1 %2 %3")
                                             .arg(firstWords.at(i % firstWords.size()),
                                                  lastWords.at((i / firstWords.size()) % lastWords.size()))
                                             .arg(i / 56 + 1),
                                .genre = genres.at(i % genres.size()),
                                .copies = 1 + i % 4,
                                .price = 550,
                                .code = i + 1,
                                .year = 1970 + i % 30});
    for (int i = 0; i < customerCount; ++i)
        store.customers.append(Customer{.id = QStringLiteral("C-%1").arg(i),
                                        .name = QStringLiteral("João Conceição %1").arg(i),
                                        .phone = "(11) 98765-4321",
                                        .code = i + 1});
    // One rental in ten is still out; a little over half of those are late.
    for (int i = 0; i < rentalCount; ++i) {
        const bool out = i % 10 == 0;
        const Instant start{out ? now.seconds - (i % 1000) * 600.0
                                : now.seconds - 400000.0 - (rentalCount - i) * 600.0};
        Rental rental{.id = QStringLiteral("R-%1").arg(i),
                      .film = QStringLiteral("F-%1").arg(i % filmCount),
                      .customer = QStringLiteral("C-%1").arg(i % customerCount),
                      .start = start,
                      .due = start.plusSeconds(259200),
                      .price = 550,
                      .finePerDay = 300};
        if (!out)
            rental.returned = start.plusSeconds(200000);
        store.rentals.append(rental);
    }
    return store;
}

struct Figures {
    double medianCount = 0;
    double worstCount = 0;
    double medianPaint = 0;
    double worstPaint = 0;
    int fewestRows = 0;
    int mostRows = 0;
};

double median(QList<double> values) {
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

// Types the query a letter at a time, then takes it back, until 50 keys were pressed.
Figures timeKeystrokes(App& app, const QString& query) {
    app.focus(app.search);
    QList<double> toCount;
    QList<double> toPaint;
    Figures figures{.fewestRows = INT_MAX};
    qsizetype typed = 0;
    bool typing = true;
    for (int k = 0; k < keystrokes; ++k) {
        QElapsedTimer timer;
        timer.start();
        if (typing) {
            QTest::sendKeyEvent(QTest::Click, app.search, Qt::Key_unknown, query.mid(typed, 1), Qt::NoModifier);
            ++typed;
        } else {
            QTest::keyClick(app.search, Qt::Key_Backspace);
            --typed;
        }
        const int count = app.table->model()->rowCount();
        toCount.append(double(timer.nsecsElapsed()) / 1e6);
        app.table->viewport()->repaint();
        toPaint.append(double(timer.nsecsElapsed()) / 1e6);
        figures.fewestRows = std::min(figures.fewestRows, count);
        figures.mostRows = std::max(figures.mostRows, count);
        if (typed == query.size())
            typing = false;
        else if (typed == 0)
            typing = true;
    }
    figures.medianCount = median(toCount);
    figures.worstCount = *std::max_element(toCount.begin(), toCount.end());
    figures.medianPaint = median(toPaint);
    figures.worstPaint = *std::max_element(toPaint.begin(), toPaint.end());
    return figures;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QTemporaryDir dir;
    App app;
    app.folder = dir.path();
    app.clock = [] {
        return now;
    };
    app.launch();
    app.enterProgram();
    app.store = yearsOfBusiness();

    std::printf("%d films, %d customers, %d rentals (%d out); %d keystrokes per list\n", filmCount, customerCount,
                rentalCount, rentalCount / 10, keystrokes);
    std::printf("%-16s %9s %12s %11s %12s %11s %15s\n", "list", "open ms", "count med ms", "count max", "paint med ms",
                "paint max", "rows shown");
    const struct {
        const char* name;
        int section;
        QString query;
    } lists[] = {{"films", Section::films, QStringLiteral("ação perdida 1")},
                 {"rented", Section::rented, QStringLiteral("cod-012")}};
    for (const auto& list : lists) {
        QElapsedTimer opening;
        opening.start();
        app.navigate(list.section);
        const double open = double(opening.nsecsElapsed()) / 1e6;
        QApplication::processEvents();
        const Figures figures = timeKeystrokes(app, list.query);
        std::printf("%-16s %9.1f %12.2f %11.2f %12.2f %11.2f %7d…%-7d\n", list.name, open, figures.medianCount,
                    figures.worstCount, figures.medianPaint, figures.worstPaint, figures.fewestRows, figures.mostRows);
    }
    return 0;
}
