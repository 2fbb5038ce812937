// The real program on a realistic shop, driven by seeded random keys from the
// whole key map: function keys, Tab, arrows, Return, Escape, letters, digits,
// S/N, clipboard keys, short texts with accents and markup characters, and long
// strings. Dialogs get the keys too, since every key goes to whatever the
// operator would be typing into. After every commit the document must read back
// equal from the database and keep its invariants.
//
// CINEFITA_SOAK_KEYS sets the number of keys (`make soak` runs 200 000),
// CINEFITA_SOAK_SEED the seed; the seed is printed so any failure replays.
#include "app/App.h"
#include "records/StoreJSON.h"
#include "storage/LocalDatabase.h"
#include "support/RawDatabase.h"

#include <QApplication>
#include <QFileInfo>
#include <QMainWindow>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

const Instant now{800000000}; // 2026-05-08

// A few hundred films and customers, rentals returned, open and late, and a cash
// book that matches them plus a few entries made by hand.
Store realisticShop() {
    Store store;
    store.locadoraName = QStringLiteral("Vídeo & Cia \"Central\"");
    const QStringList genres = {"Ação", "Comédia", "Drama", "Terror", "Infantil"};
    for (int i = 0; i < 300; ++i)
        store.films.append(Film{QStringLiteral("F-%1").arg(i), QStringLiteral("Filme %1 — Ação <%2>").arg(i).arg(i % 7),
                                genres[i % genres.size()], 1 + i % 3, 300 + i % 5 * 50, i + 1, 1980 + i % 40,
                                i % 37 == 0 ? std::optional<bool>(true) : std::nullopt,
                                QStringLiteral("Sinopse %1").arg(i), std::nullopt, i % 4 == 0});
    for (int i = 0; i < 250; ++i)
        store.customers.append(Customer{QStringLiteral("C-%1").arg(i), QStringLiteral("Cliente Conceição %1").arg(i),
                                        "(11) 98765-4321", i + 1, "Rua das Flores, 1", "São Paulo", "SP", "01000-000",
                                        i % 41 == 0 ? std::optional<bool>(true) : std::nullopt});
    for (int i = 0; i < 600; ++i) {
        const Film& film = store.films[i % 300];
        const Instant start{now.seconds - 86400.0 * (1 + i % 40)};
        Rental rental{QStringLiteral("R-%1").arg(i),
                      film.id,
                      QStringLiteral("C-%1").arg(i % 250),
                      start,
                      Instant{start.seconds + 259200},
                      std::nullopt,
                      film.price,
                      200};
        rental.copy = 1;
        if (i < 450) { // the open ones are films 150 to 299, one copy each
            rental.returned = Instant{start.seconds + 200000};
            rental.fine = 0;
            rental.rewound = true;
            rental.rewindFee = 0;
        }
        store.rentals.append(rental);
        store.entries.append(
            Entry{QStringLiteral("E-%1").arg(i), start, QStringLiteral("Locação: ") + film.title, rental.price});
    }
    for (int i = 0; i < 5; ++i)
        store.entries.append(Entry{QStringLiteral("M-%1").arg(i), now, QStringLiteral("Troco"), 1000 - i * 500});
    return store;
}

qint64 booked(const Store& store) {
    qint64 sum = 0;
    for (const Rental& rental : store.rentals)
        sum += rental.price + rental.fine.value_or(0) + rental.rewindFee.value_or(0);
    return sum;
}

qint64 cash(const Store& store) {
    qint64 sum = 0;
    for (const Entry& entry : store.entries)
        sum += entry.amount;
    return sum;
}

// Empty when the store keeps every invariant; `manual` is the sum of the entries
// made by hand so far.
QString broken(const Store& store, const QString& databasePath, qint64 manual) {
    const std::optional<QByteArray> saved = RawDatabase(databasePath).payload("state");
    if (!saved || !(decodeStore(*saved) == store))
        return QStringLiteral("the database holds another store");
    QSet<QString> films, customers, filmCodes, customerCodes, out;
    for (const Film& film : store.films) {
        films.insert(film.id);
        const QString code = QString::number(film.code.value_or(-1));
        if (filmCodes.contains(code))
            return QStringLiteral("film code %1 twice").arg(code);
        filmCodes.insert(code);
    }
    for (const Customer& customer : store.customers) {
        customers.insert(customer.id);
        const QString code = QString::number(customer.code.value_or(-1));
        if (customerCodes.contains(code))
            return QStringLiteral("customer code %1 twice").arg(code);
        customerCodes.insert(code);
    }
    for (const Rental& rental : store.rentals) {
        if (!films.contains(rental.film) || !customers.contains(rental.customer))
            return QStringLiteral("rental %1 names no film or customer").arg(rental.id);
        const QString tape = rental.film + '#' + QString::number(rental.copy.value_or(0));
        if (!rental.returned && out.contains(tape))
            return QStringLiteral("copy %1 out twice").arg(tape);
        if (!rental.returned)
            out.insert(tape);
    }
    if (cash(store) != booked(store) + manual)
        return QStringLiteral("cash book %1, booked %2 + by hand %3").arg(cash(store)).arg(booked(store)).arg(manual);
    return {};
}

// ---- The random operator ------------------------------------------------------

struct Press {
    Qt::Key key = Qt::Key_unknown;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    QString text; // typed key by key when set
};

// Weighted so that whole operations (a rental, a return, a cash entry, a record)
// happen now and then: Return, Down, digits and codes come often, Escape seldom.
Press randomPress(QRandomGenerator& random) {
    static const QList<Qt::Key> named = {
        Qt::Key_F1,  Qt::Key_F2,     Qt::Key_F3,       Qt::Key_F4,    Qt::Key_F5,        Qt::Key_F6,    Qt::Key_F7,
        Qt::Key_F8,  Qt::Key_F9,     Qt::Key_Tab,      Qt::Key_Up,    Qt::Key_Left,      Qt::Key_Right, Qt::Key_Home,
        Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Space, Qt::Key_Backspace, Qt::Key_Delete};
    static const QStringList texts = {"ação",  "São João", "O'Brien",  "\"aspas\"",   "<b>", "a & b",
                                      "12,50", "-3",       "1/1/2026", "99999999999", "Ç",   "é",
                                      "ñ",     "entrada",  "saida",    " ",           "1",   "2",
                                      "15",    "150",      "151",      "200",         "0,5", "10"};
    const int kind = int(random.bounded(100));
    if (kind < 22)
        return {named[random.bounded(named.size())]};
    if (kind < 25)
        return {Qt::Key_Backtab, Qt::ShiftModifier};
    if (kind < 28)
        return {Qt::Key_Escape};
    if (kind < 40)
        return {random.bounded(3) == 0 ? Qt::Key_Enter : Qt::Key_Return};
    if (kind < 48)
        return {Qt::Key_Down};
    if (kind < 56)
        return {random.bounded(2) == 0 ? Qt::Key_S : Qt::Key_N};
    if (kind < 64)
        return {Qt::Key(Qt::Key_A + random.bounded(26)), random.bounded(4) == 0 ? Qt::ShiftModifier : Qt::NoModifier};
    if (kind < 74)
        return {Qt::Key(Qt::Key_0 + random.bounded(10))};
    if (kind < 79) {
        static const QList<Qt::Key> clipboard = {Qt::Key_C, Qt::Key_X, Qt::Key_V, Qt::Key_A, Qt::Key_Z, Qt::Key_F};
        return {clipboard[random.bounded(clipboard.size())], Qt::ControlModifier};
    }
    if (kind < 99)
        return {Qt::Key_unknown, Qt::NoModifier, texts[random.bounded(texts.size())]};
    QString longText;
    for (int i = 0; i < 300; ++i)
        longText += QChar(u"aãbç<&\"' 0123é"[random.bounded(14)]);
    return {Qt::Key_unknown, Qt::NoModifier, longText};
}

// What the operator types into: an open menu, then a dialog, then the window.
QWidget* keyTarget(App& app) {
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal->focusWidget() != nullptr ? modal->focusWidget() : modal;
    if (QWidget* focused = QApplication::focusWidget())
        return focused;
    return app.window;
}

void send(App& app, const Press& press) {
    if (press.text.isEmpty()) {
        QTest::keyClick(keyTarget(app), press.key, press.modifiers);
        return;
    }
    for (QChar letter : press.text)
        QTest::sendKeyEvent(QTest::Click, keyTarget(app), Qt::Key_unknown, QString(letter), Qt::NoModifier);
}

} // namespace

// The offscreen platform's notes about window hints it ignores would drown the log.
QtMessageHandler previous = nullptr;
void quietPlatform(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (!message.startsWith(QLatin1String("This plugin does not support")))
        previous(type, context, message);
}

class TestSoak : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { previous = qInstallMessageHandler(quietPlatform); }

    void randomKeysKeepTheDocumentWhole() {
        const int keys = qEnvironmentVariableIntValue("CINEFITA_SOAK_KEYS") > 0
                             ? qEnvironmentVariableIntValue("CINEFITA_SOAK_KEYS")
                             : 3000;
        const quint32 seed = qEnvironmentVariableIsSet("CINEFITA_SOAK_SEED")
                                 ? quint32(qEnvironmentVariableIntValue("CINEFITA_SOAK_SEED"))
                                 : QRandomGenerator::system()->generate() % 1000000;
        qInfo() << "seed:" << seed << "keys:" << keys;
        QVERIFY(soak(seed, keys));
    }

private:
    // False (with the failure noted) when an invariant broke.
    bool soak(quint32 seed, int keys) {
        QTemporaryDir dir;
        const QString databasePath = dir.filePath("cinefita.sqlite");
        const QString csvPath = dir.filePath("filmes.csv");
        QFile csv(csvPath);
        if (!csv.open(QIODevice::WriteOnly))
            return false;
        csv.write("titulo;genero;copias;preco\nNovo Filme & Cia;Drama;2;4,50\n");
        csv.close();
        LocalDatabase(databasePath).save(realisticShop());

        QRandomGenerator random(seed);
        App app;
        app.folder = dir.path();
        app.seams.clock = [] {
            return now;
        };
        int terminations = 0, pages = 0;
        app.seams.terminate = [&] {
            ++terminations;
        };
        app.seams.chooseOpenFile = [&](const QString&, const QString&) {
            return random.bounded(3) == 0 ? QString() : csvPath;
        };
        app.seams.chooseSaveFile = [&](const QString&, const QString& proposed, const QString&) {
            return random.bounded(3) == 0 ? QString() : dir.filePath(QFileInfo(proposed).fileName());
        };
        app.seams.openPrintPage = [&](const QString&) {
            ++pages;
        };
        app.seams.randomIndex = [&](qsizetype count) {
            return qsizetype(random.bounded(quint64(count)));
        };
        app.launch();
        if (app.window == nullptr || !QTest::qWaitForWindowActive(app.window))
            return false;

        Store last = app.store;
        qint64 manual = cash(last) - booked(last);
        int commits = 0, sent = 0, unwinding = 0;
        QString failure;
        QEventLoop loop;
        // One key per turn of the event loop, scheduled before it is sent, so keys
        // keep coming inside a dialog that the key opens.
        std::function<void()> next = [&] {
            if (!failure.isEmpty() ||
                (sent >= keys && (QApplication::activeModalWidget() == nullptr || ++unwinding > 200))) {
                loop.quit();
                return;
            }
            QTimer::singleShot(0, &app, next);
            const Press press = sent < keys ? randomPress(random) : Press{Qt::Key_Escape};
            ++sent;
            if (sent % 10000 == 0)
                qInfo() << "keys sent:" << sent << "commits:" << commits;
            send(app, press);
            if (app.store == last)
                return;
            ++commits;
            if (app.store.rentals == last.rentals)
                manual += cash(app.store) - cash(last);
            last = app.store;
            failure = broken(app.store, databasePath, manual);
            if (!failure.isEmpty())
                failure = QStringLiteral("seed %1, key %2: %3").arg(seed).arg(sent).arg(failure);
        };
        QTimer::singleShot(0, &app, next);
        loop.exec();
        qInfo() << "keys sent:" << sent << "commits:" << commits << "pages opened:" << pages
                << "exits asked:" << terminations;
        if (failure.isEmpty())
            failure = broken(app.store, databasePath, manual);
        if (!failure.isEmpty())
            qWarning().noquote() << failure;
        return failure.isEmpty();
    }
};

QTEST_MAIN(TestSoak)
#include "test_soak.moc"
