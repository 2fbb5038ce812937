#include "gui/GuiSupport.h"
#include "support/Builders.h"

#include "app/ScanFilter.h"
#include "look/DOSSearchField.h"
#include "screens/RentalScreen.h"

#include <QKeyEvent>
#include <QLabel>
#include <QTableView>

namespace {

const Instant now{800000000}; // 09/05/2026 03:13 in São Paulo

// TUBARÃO has copy 2 out, ALIEN its only copy; GREMLINS was removed with copy 1 still out;
// JOÃO owes two tapes (TUBARÃO 2 and GREMLINS 1), both late.
Store shop() {
    Store store;
    store.films = counterFilms(5);
    store.customers = {
        Customer{.id = "C1", .name = "MARIA SILVA", .phone = "(11) 5555-0101", .code = 1},
        Customer{.id = "C2", .name = "JOÃO", .phone = "(11) 5555-0102", .code = 2},
    };
    const auto out = [](const char* film, qint64 copy, const char* customer, double due) {
        return Rental{.id = QStringLiteral("OUT-") + film,
                      .film = film,
                      .customer = customer,
                      .start = now.plusSeconds(due - 259200),
                      .due = now.plusSeconds(due),
                      .price = 100,
                      .finePerDay = 200,
                      .copy = copy};
    };
    store.rentals = {out("F1", 2, "C2", -2 * 86400), out("F2", 1, "C1", 86400), out("F3", 1, "C2", -86400)};
    return store;
}

// The operator and the scanner at the keyboard: every key press carries its own time.
struct Counter : ShopOnDisk {
    Counter() : ShopOnDisk(now) {}
    bool open(bool leaveSplash = true) {
        if (!launch(shop()))
            return false;
        app->scanFilter->setClock([this] { return clock; });
        app->blinkTimer->stop(); // the debt alert would write over the status line
        if (leaveSplash)
            app->enterProgram();
        return true;
    }
    void key(int code, const QString& text, qint64 gap) {
        stamp += gap;
        clock += gap;
        QWidget* target = focused() != nullptr ? focused() : app->window;
        QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier, text);
        press.setTimestamp(quint64(stamp));
        QApplication::sendEvent(target, &press);
        QCoreApplication::processEvents();
    }
    void keys(const QString& text, qint64 gap) {
        for (QChar letter : text)
            key(letter.toUpper().unicode(), QString(letter), gap);
    }
    // A wedge scanner, a while after the last key: the code's characters a few
    // milliseconds apart, then Return.
    void scan(const QString& code, qint64 gap = 5) {
        stamp += 1000;
        clock += 1000;
        keys(code, gap);
        key(Qt::Key_Return, "\r", gap);
    }
    // Waits out the hold a lone key is given before it is taken as typed.
    void pause() {
        clock += 1000;
        stamp += 1000;
        QTest::qWait(2 * int(ScanDetector::holdLimit));
    }
    qint64 stamp = 100000;
    qint64 clock = 0;
};

} // namespace

class CounterTest : public QObject {
    Q_OBJECT

private slots:
    // Letters of a scan are shortcuts ("c", "l", "x") and its Return would press the
    // focused menu entry: neither may happen.
    void scanOnTheMenuRunsNoKey() {
        Counter counter;
        QVERIFY(counter.open());
        DOSButton* rented = counter.button("[F5] LOCADOS");
        counter.app->focus(rented);
        DialogAnswerer refusal(DialogAnswerer::pressKey(Qt::Key_Return));
        counter.scan("cod-9999-001");
        QCOMPARE(refusal.seen().title, "Código recusado");
        QCOMPARE(counter.app->section, int(Section::home));
        QCOMPARE(counter.focused(), rented);
    }

    // A scanner at 20 ms is a scan; a fast typist at 60 ms types, and every letter stays.
    void scannerAndTypist_data() {
        QTest::addColumn<int>("gap");
        QTest::addColumn<QString>("field");
        QTest::newRow("scanner, 20 ms") << 20 << "0002";
        QTest::newRow("typist, 60 ms") << 60 << "cli-0002";
    }

    void scannerAndTypist() {
        QFETCH(int, gap);
        QFETCH(QString, field);
        Counter counter;
        QVERIFY(counter.open());
        counter.app->navigate(Section::rental);
        counter.app->focus(counter.field("clientCode"));
        std::unique_ptr<DialogAnswerer> late;
        if (gap < ScanDetector::scanGap)
            late = std::make_unique<DialogAnswerer>(DialogAnswerer::pressKey(Qt::Key_Return));
        counter.scan("cli-0002", gap);
        QCOMPARE(counter.field("clientCode")->text(), field);
        QCOMPARE(counter.app->rentalCustomer, std::optional<QString>("C2"));
        QCOMPARE(late != nullptr, gap < ScanDetector::scanGap);
    }

    // A shortcut typed by hand still acts, once the wait for a scan is over.
    void handTypedLetterStillOpens() {
        Counter counter;
        QVERIFY(counter.open());
        counter.keys("c", 100);
        counter.pause();
        QTRY_COMPARE(counter.app->section, int(Section::customers));
    }

    // A scan into a half-typed field returns the tape and leaves the field as it was.
    void returnLeavesTheFieldAsTyped() {
        Counter counter;
        QVERIFY(counter.open());
        counter.app->navigate(Section::rental);
        DOSField* title = counter.field("film");
        counter.app->focus(title);
        counter.keys("tub", 100);
        title->setCursorPosition(1);
        DialogAnswerer rewind(DialogAnswerer::pressKey(Qt::Key_S));
        counter.scan("COD-0001-002");
        QCOMPARE(rewind.seen().title, "FITA FOI REBOBINADA? [S/N]");
        QVERIFY(rewind.seen().text.startsWith("COD-0001-002 — TUBARÃO\nCliente: JOÃO\n"));
        QCOMPARE(title->text() + QString::number(title->cursorPosition()), "tub1");
        QCOMPARE(counter.focused(), title);
        QVERIFY(counter.saved().rentals.first().returned == now);
        QCOMPARE(counter.app->status->text(), "DEVOLVIDA: COD-0001-002 — TUBARÃO");
    }

    // The film was removed after the tape went out: the tape still comes back, from the splash.
    void returnOfARemovedFilm() {
        Counter counter;
        QVERIFY(counter.open(false));
        DialogAnswerer rewind(DialogAnswerer::pressKey(Qt::Key_N));
        counter.scan(" 0003-001 ");
        QVERIFY(rewind.answered());
        QVERIFY(!counter.app->showingSplash);
        QCOMPARE(counter.app->section, int(Section::home));
        const Rental back = counter.saved().rentals.last();
        QVERIFY(back.returned && back.rewindFee == 100);
    }

    // The debt is shown before renting: both late tapes' total (the lines are the scan target test's).
    void cardOfACustomerWithLateTapes() {
        Counter counter;
        QVERIFY(counter.open());
        DialogAnswerer late(DialogAnswerer::pressKey(Qt::Key_Return));
        counter.scan("CLI-0002");
        QVERIFY(late.seen().text.endsWith("\nTotal: R$ 6,00"));
        QCOMPARE(counter.app->section, int(Section::rental));
        QCOMPARE(counter.app->rentalCustomer, std::optional<QString>("C2"));
        QCOMPARE(counter.focused(), counter.field("code"));
    }

    // Card, then three tapes (the second typed by hand in CÓDIGO): all rented in one
    // commit, or none when one cannot be.
    void threeTapesInOneRental_data() {
        QTest::addColumn<QString>("third");
        QTest::addColumn<QString>("refusal");
        QTest::newRow("all free") << "COD-0005-001"
                                  << "";
        QTest::newRow("third has no free copy") << "COD-0002"
                                                << "Exemplar indisponível";
    }

    void threeTapesInOneRental() {
        QFETCH(QString, third);
        QFETCH(QString, refusal);
        Counter counter;
        QVERIFY(counter.open());
        counter.scan("CLI-0001");
        counter.scan("COD-0001-001");
        counter.app->focus(counter.field("code"));
        counter.keys("cod-0004-001", 100);
        counter.key(Qt::Key_Return, "\r", 100);
        counter.scan(third);
        QWidget* list = counter.app->screen.basketList;
        QVERIFY(list->isVisible() && counter.app->mainControls().contains(list));
        QCOMPARE(counter.app->rentalTapes.size(), 3);
        auto* save = qobject_cast<DOSButton*>(counter.focused());
        QVERIFY(save != nullptr && save->text() == "SALVAR" && counter.app->mainControls().contains(save));

        DialogAnswerer answer(DialogAnswerer::pressKey(Qt::Key_Return));
        counter.press(Qt::Key_Return);
        const Store saved = counter.saved();
        QCOMPARE(answer.seen().title, refusal);
        QCOMPARE(saved.rentals.size(), refusal.isEmpty() ? 6 : 3);
        QCOMPARE(saved.entries.size(), refusal.isEmpty() ? 3 : 0);
    }
};

QTEST_MAIN(CounterTest)
#include "test_counter.moc"
