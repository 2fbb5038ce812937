#pragma once

#include <QByteArray>
#include <QString>
#include <exception>

// The program's one error that carries a ready-to-show Portuguese message. The
// CSV reader, the files, the store's JSON, the local database, start-up and the
// shop's rules throw it; screens show description() unchanged, under title()
// when the thrower named the dialog, so every caller catches this one type.
class FilmCSVError : public std::exception {
public:
    static FilmCSVError invalid(const QString& message) { return FilmCSVError(message); }

    explicit FilmCSVError(QString message) : message_(std::move(message)), utf8_(message_.toUtf8()) {}
    FilmCSVError(QString title, QString message) : FilmCSVError(std::move(message)) { title_ = std::move(title); }

    const QString& title() const { return title_; }
    const QString& description() const { return message_; }
    const char* what() const noexcept override { return utf8_.constData(); }

private:
    QString title_;
    QString message_;
    QByteArray utf8_;
};
