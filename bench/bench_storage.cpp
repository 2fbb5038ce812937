// Prints how long the store takes to encode, decode, save and load at three
// sizes, next to the floor of writing the same bytes twice with an fsync.
#include "records/StoreJSON.h"
#include "storage/LocalDatabase.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

Store sampleStore(int rentals) {
    Store store;
    store.locadoraName = QStringLiteral("Vídeo Locadora São João");
    store.reportRentalBaseline = 0;
    const int films = std::max(10, rentals / 10);
    const int customers = std::max(10, rentals / 20);
    for (int i = 0; i < films; ++i)
        store.films.append(Film{QStringLiteral("F-%1").arg(i), QStringLiteral("Ação na Cidade Perdida %1").arg(i),
                                "Ação, Aventura", 3, 550, i + 1, 1980 + i % 40, false,
                                QStringLiteral("Um herói improvável enfrenta a máfia da locadora.\nLinha dois."),
                                QStringLiteral("Lost City Action %1").arg(i), i % 5 == 0});
    for (int i = 0; i < customers; ++i)
        store.customers.append(Customer{QStringLiteral("C-%1").arg(i), QStringLiteral("João Conceição %1").arg(i),
                                        "(11) 987654321", i + 1, "Rua das Flores, 123", "São Paulo", "SP",
                                        "01000-000"});
    for (int i = 0; i < rentals; ++i) {
        const double start = 700000000.0 + i * 613.25;
        store.rentals.append(Rental{QStringLiteral("R-%1").arg(i), QStringLiteral("F-%1").arg(i % films),
                                    QStringLiteral("C-%1").arg(i % customers), Instant{start}, Instant{start + 259200},
                                    Instant{start + 300000.5}, 550, 300, 300, i % 2 == 0, i % 2 == 0 ? 0 : 100,
                                    1 + i % 3});
        store.entries.append(Entry{QStringLiteral("E-%1").arg(i), Instant{start},
                                   QStringLiteral("Locação: Ação na Cidade Perdida %1").arg(i % films), 550});
    }
    return store;
}

template <typename F> double millis(F&& work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

void writeSynced(const QString& path, const QByteArray& bytes) {
    const int fd = ::open(path.toLocal8Bit().constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd < 0 || ::write(fd, bytes.constData(), size_t(bytes.size())) != bytes.size() || ::fsync(fd) != 0)
        std::perror("floor write");
    if (fd >= 0)
        ::close(fd);
}

} // namespace

int main(int argc, char** argv) {
    // Sizes may be given on the command line (e.g. a single small one for profiling).
    QList<int> sizes = {1000, 10000, 100000};
    if (argc > 1) {
        sizes.clear();
        for (int i = 1; i < argc; ++i)
            sizes.append(QByteArray(argv[i]).toInt());
    }
    QTemporaryDir dir;
    std::printf("%9s %12s %10s %10s %10s %10s %10s %7s %9s %9s\n", "rentals", "bytes", "encode ms", "decode ms",
                "save ms", "load ms", "floor ms", "ratio", "enc MB/s", "dec MB/s");
    for (int rentals : sizes) {
        const Store store = sampleStore(rentals);
        QByteArray json;
        Store decoded;
        const double encode = millis([&] { json = encodeStore(store); });
        const double decode = millis([&] { decoded = decodeStore(json); });
        if (!(decoded == store))
            std::fputs("round trip differs!\n", stderr);

        const QString path = dir.filePath(QStringLiteral("bench-%1.sqlite").arg(rentals));
        LocalDatabase database(path);
        database.save(store); // the measured save also copies a previous row, as every later save does
        const double save = millis([&] { database.save(store); });
        const double load = millis([&] { (void)database.load(); });
        const QString floorPath = dir.filePath("floor.bin");
        const double floor = millis([&] {
            writeSynced(floorPath, json);
            writeSynced(floorPath, json);
        });
        const double megabytes = double(json.size()) / 1e6;
        std::printf("%9d %12lld %10.1f %10.1f %10.1f %10.1f %10.1f %7.2f %9.0f %9.0f\n", rentals,
                    static_cast<long long>(json.size()), encode, decode, save, load, floor, save / floor,
                    megabytes / (encode / 1000.0), megabytes / (decode / 1000.0));
    }
    return 0;
}
