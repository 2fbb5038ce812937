// A film CSV of a million rows through the import path the screen takes (the
// file read in pieces, checked, then built), then the save of the result. Prints
// the time of each step, the process's peak memory after it and that peak over
// the file's size. Run once per size: the peak is the process's.
#include "exchange/FilmCSV.h"
#include "exchange/ScreenExport.h"
#include "records/FilmCSVError.h"
#include "storage/LocalDatabase.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

namespace {

long peakKiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toLong();
    return -1;
}

double fileMiB = 1;

void step(const char* name, QElapsedTimer& timer) {
    const long peak = peakKiB();
    std::printf("%-28s %9.0f ms   peak %7ld MiB = %4.1f x the file\n", name, double(timer.nsecsElapsed()) / 1e6,
                peak / 1024, double(peak) / 1024 / fileMiB);
    std::fflush(stdout);
    timer.restart();
}

} // namespace

int main(int argc, char** argv) {
    const int rows = argc > 1 ? QByteArray(argv[1]).toInt() : 1'000'000;
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("filmes.csv"));
    {
        // Written in chunks so the file's own making does not set the peak.
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return 1;
        file.write("FILME;CÓDIGO;ANO;GÊNERO;QUANT.;PREÇO (R$);SINOPSE\r\n");
        QByteArray chunk;
        for (int i = 0; i < rows; ++i) {
            chunk +=
                QStringLiteral("\"Ação na Cidade Perdida %1\";;%2;Ação, Aventura;3;5,50;\"Um herói; a máfia.\"\r\n")
                    .arg(i)
                    .arg(1980 + i % 40)
                    .toUtf8();
            if (chunk.size() > (1 << 20)) {
                file.write(chunk);
                chunk.clear();
            }
        }
        file.write(chunk);
    }
    fileMiB = double(QFile(path).size()) / (1 << 20);
    std::printf("%d rows, %.1f MB, peak before reading %ld MiB\n", rows, double(QFile(path).size()) / 1e6,
                peakKiB() / 1024);
    QElapsedTimer timer;
    timer.start();
    Store imported;
    qint64 reports = 0;
    try {
        imported = importFilmCSVFile(path, Store{}, [&reports](qint64, qint64) { ++reports; });
        step("read, check and import", timer);
    } catch (const FilmCSVError& error) {
        step("read and check: refused", timer);
        std::printf("  \"%s\"\n", qPrintable(error.description()));
        return 0;
    }
    LocalDatabase database(dir.filePath(QStringLiteral("cinefita.sqlite")));
    database.save(imported);
    step("save (encode and commit)", timer);
    std::printf("%lld films imported, %lld progress reports\n", qlonglong(imported.films.size()), qlonglong(reports));
    return 0;
}
