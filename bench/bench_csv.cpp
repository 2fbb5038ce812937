// A film CSV of a million rows through the import path the screen takes: read,
// decode, parse and import, then the save of the result. Prints the time of each
// step and the process's peak memory after it. Run once per size: the peak is
// the process's.
#include "exchange/FilmCSV.h"
#include "exchange/ScreenExport.h"
#include "files/FileWriting.h"
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

void step(const char* name, QElapsedTimer& timer) {
    std::printf("%-28s %9.0f ms   peak %7ld MiB\n", name, double(timer.nsecsElapsed()) / 1e6, peakKiB() / 1024);
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
    std::printf("%d rows, %.1f MB, peak before reading %ld MiB\n", rows, double(QFile(path).size()) / 1e6,
                peakKiB() / 1024);
    QElapsedTimer timer;
    timer.start();
    const QByteArray bytes = readWholeFile(path);
    step("read", timer);
    const QString text = decodedCSVText(bytes);
    step("decode", timer);
    Store imported;
    try {
        imported = importFilmsCSV(text, Store{});
        step("parse and import", timer);
    } catch (const FilmCSVError& error) {
        step("parse and import: refused", timer);
        std::printf("  \"%s\"\n", qPrintable(error.description()));
        return 0;
    }
    LocalDatabase database(dir.filePath(QStringLiteral("cinefita.sqlite")));
    database.save(imported);
    step("save (encode and commit)", timer);
    std::printf("%lld films imported\n", qlonglong(imported.films.size()));
    return 0;
}
