#include "modes/Modes.h"

#include "files/FileWriting.h"
#include "print/PrintFiles.h"

#include <QCoreApplication>
#include <cstdio>

int runPrintFixtures(int argc, char** argv, const char* outputDir) {
    QCoreApplication application(argc, argv);
    try {
        writeSamplePages(QString::fromLocal8Bit(outputDir));
    } catch (const FilmCSVError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
