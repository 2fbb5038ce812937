#include "exchange/BackupRestore.h"
#include "exchange/ScreenExport.h"
#include "records/StoreJSON.h"
#include "support/Dates.h"
#include "support/Failures.h"

#include <QtTest>

namespace {

// Ready as start-up leaves a store: codes, baseline. The later rental is listed first.
Store sample() {
    Store store;
    store.reportRentalBaseline = 1;
    store.locadoraName = QStringLiteral("Vídeo / Central");
    store.films = {{.id = "f1", .title = "Alien", .genre = "Terror", .copies = 2, .price = 300, .code = 1}};
    store.customers = {{.id = "c1", .name = "Ana", .phone = "", .code = 1}};
    store.rentals = {
        {.id = "r2", .film = "f1", .customer = "c1", .start = at("09/10/2026 18:30"), .due = at("12/10/2026 18:30")},
        {.id = "r1", .film = "f1", .customer = "c1", .start = at("01/10/2026 10:00"), .due = at("04/10/2026 10:00")}};
    store.entries = {
        {.id = "e1", .date = at("01/10/2026 10:00"), .description = "Locação: Alien / Ana", .amount = 300}};
    return store;
}

// As versions before codes wrote it: spaces, an escaped slash, a byte-order mark,
// no codes, no baseline.
const QByteArray legacy =
    "\xEF\xBB\xBF{ \"films\" : [ {\"id\":\"a\",\"title\":\"AC\\/DC ao vivo\",\"genre\":\"Musical\",\"copies\":1,"
    "\"price\":300}, {\"id\":\"b\",\"title\":\"Brazil\",\"genre\":\"Drama\",\"copies\":1,\"price\":300} ],\n"
    " \"customers\" : [ {\"id\":\"c\",\"name\":\"Ana\",\"phone\":\"\"} ],\n"
    " \"rentals\" : [ {\"id\":\"r\",\"film\":\"a\",\"customer\":\"c\",\"start\":10.5,\"due\":20,\"price\":300,"
    "\"finePerDay\":100} ],\n \"entries\" : [] }\n";

Store legacyRead() {
    Store store;
    store.reportRentalBaseline = 1;
    store.films = {{.id = "a", .title = "AC/DC ao vivo", .genre = "Musical", .copies = 1, .price = 300, .code = 1},
                   {.id = "b", .title = "Brazil", .genre = "Drama", .copies = 1, .price = 300, .code = 2}};
    store.customers = {{.id = "c", .name = "Ana", .phone = "", .code = 1}};
    store.rentals = {
        {.id = "r", .film = "a", .customer = "c", .start = {10.5}, .due = {20}, .price = 300, .finePerDay = 100}};
    return store;
}

} // namespace

class TestRestore : public QObject {
    Q_OBJECT

private slots:
    void reads_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Store>("expected");
        QTest::newRow("the backup's own output") << backupText(sample()).toUtf8() << sample();
        QTest::newRow("the stored compact form") << encodeStore(sample()) << sample();
        QTest::newRow("legacy data file, made ready as at start-up") << legacy << legacyRead();
    }
    void reads() {
        QFETCH(QByteArray, bytes);
        QFETCH(Store, expected);
        QCOMPARE(restoredStore(bytes), expected);
    }

    // Refused with the reader's own reason (which documents it refuses is the stored
    // document's test), and with a reason when the file cannot be read.
    void refuses() {
        const QByteArray backup = backupText(sample()).toUtf8();
        const QByteArray truncated = backup.left(backup.size() / 2);
        const QString reason = failureOf<StoreJSONError>([&] { decodeStore(truncated); });
        QVERIFY(!reason.isEmpty());
        QCOMPARE(failureOf([&] { restoredStore(truncated); }), reason);
        QTemporaryDir folder;
        QVERIFY(!failureOf([&] { restoredStoreFromFile(folder.filePath(QStringLiteral("nada.json"))); }).isEmpty());
    }

    void question() {
        QCOMPARE(restoreQuestion(legacyRead(), sample()),
                 QStringLiteral("Agora: 2 filmes, 1 cliente, 1 locação, 0 lançamentos no caixa; locação mais recente "
                                "em 31/12/2000 22:00.\nNo arquivo: 1 filme, 1 cliente, 2 locações, 1 lançamento no "
                                "caixa; locação mais recente em 09/10/2026 18:30.\nRestaurar substitui todos os dados "
                                "pelos do arquivo; os de agora ficam guardados como versão anterior no banco local."));
    }
};

QTEST_GUILESS_MAIN(TestRestore)
#include "test_restore.moc"
