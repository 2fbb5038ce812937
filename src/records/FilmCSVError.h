#pragma once

#include <QByteArray>
#include <QString>
#include <exception>

// The program's one error that carries a ready-to-show Portuguese message. The
// CSV reader, the local database and the return rule throw it; screens show
// description() unchanged.
class FilmCSVError : public std::exception {
public:
    static FilmCSVError invalid(const QString& message) { return FilmCSVError(message); }

    explicit FilmCSVError(QString message) : message_(std::move(message)), utf8_(message_.toUtf8()) {}

    const QString& description() const { return message_; }
    const char* what() const noexcept override { return utf8_.constData(); }

private:
    QString message_;
    QByteArray utf8_;
};
