#pragma once

#include <QByteArray>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

// Writes one line to a descriptor; a child that can no longer report ends with status 3.
inline void tellLine(int descriptor, const QByteArray& line) {
    const QByteArray text = line + '\n';
    if (::write(descriptor, text.constData(), size_t(text.size())) != text.size())
        ::_exit(3);
}

struct ChildRun {
    QByteArray output;
    int status = -1; // as waitpid gives it
};

// Forks a copy of the test that runs body(the writing end of a pipe) and ends with
// status 0, or 2 if it throws, so nothing of the test itself ever runs twice. Reads
// the pipe until it closes, calling onSeen(child's pid) once the output holds `seen`,
// then waits for the child.
inline ChildRun runChild(const std::function<void(int)>& body, const QByteArray& seen = {},
                         const std::function<void(pid_t)>& onSeen = {}) {
    ChildRun run;
    int ends[2];
    if (::pipe(ends) != 0)
        return run;
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        try {
            body(ends[1]);
        } catch (...) {
            ::_exit(2);
        }
        ::_exit(0);
    }
    ::close(ends[1]);
    bool called = !onSeen;
    char buffer[4096];
    for (ssize_t n; (n = ::read(ends[0], buffer, sizeof buffer)) > 0;) {
        run.output.append(buffer, n);
        if (!called && run.output.contains(seen)) {
            called = true;
            onSeen(child);
        }
    }
    ::close(ends[0]);
    ::waitpid(child, &run.status, 0);
    return run;
}
