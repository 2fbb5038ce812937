#pragma once

#include <QByteArray>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

// Writes one line to a descriptor; a child that can no longer report ends with status 3.
inline void tellLine(int descriptor, const QByteArray& line) {
    const QByteArray text = line + '\n';
    if (::write(descriptor, text.constData(), size_t(text.size())) != text.size())
        ::_exit(3);
}

// A forked copy of the test that reports in lines through a pipe. The body gets the
// pipe's writing end; when it returns the child ends with status 0, when it throws with 2,
// so nothing of the test itself ever runs twice.
class ChildProcess {
public:
    template <typename Body> explicit ChildProcess(Body body) {
        int ends[2];
        if (::pipe(ends) != 0)
            return;
        m_pid = ::fork();
        if (m_pid == 0) {
            ::close(ends[0]);
            try {
                body(ends[1]);
            } catch (...) {
                ::_exit(2);
            }
            ::_exit(0);
        }
        ::close(ends[1]);
        m_read = ends[0];
    }
    ~ChildProcess() {
        if (m_pid > 0 && m_status < 0) {
            kill();
            finish();
        }
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // Reads until the output holds the text; false when the child closed the pipe first.
    bool readUntil(const QByteArray& text) {
        while (!output.contains(text))
            if (!readSome())
                return false;
        return true;
    }
    void kill() const { ::kill(m_pid, SIGKILL); }
    // Reads until the pipe is closed and waits for the child; its wait status, -1 if it never ran.
    int finish() {
        while (readSome()) {
        }
        if (m_pid > 0 && m_status < 0)
            ::waitpid(m_pid, &m_status, 0);
        return m_status;
    }

    QByteArray output;

private:
    bool readSome() {
        char buffer[4096];
        const ssize_t n = m_read >= 0 ? ::read(m_read, buffer, sizeof buffer) : 0;
        if (n > 0) {
            output.append(buffer, n);
            return true;
        }
        if (m_read >= 0)
            ::close(m_read);
        m_read = -1;
        return false;
    }

    pid_t m_pid = -1;
    int m_read = -1;
    int m_status = -1;
};
