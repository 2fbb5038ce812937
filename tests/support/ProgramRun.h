#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// The program itself run as a child process, as the operator would start it.
struct ProgramRun {
    int exitCode = -1; // -1: it did not finish normally
    QString out;
    QString err;
};

inline ProgramRun runProgram(const QStringList& arguments,
                             const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment(),
                             const QString& workingFolder = QString()) {
    QProcess process;
    process.setProcessEnvironment(environment);
    if (!workingFolder.isEmpty())
        process.setWorkingDirectory(workingFolder);
    process.start(QStringLiteral(CINEFITA_BINARY), arguments);
    ProgramRun result;
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
        return result;
    result.exitCode = process.exitCode();
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}
