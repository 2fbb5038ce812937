#pragma once

#include "records/Instant.h"

#include <QList>
#include <QString>
#include <optional>

// The shop's whole state is one Store document. Records are plain values; the
// rules are free functions over them. Money is in centavos.

struct Film {
    QString id;
    QString title;
    QString genre;
    qint64 copies = 0;
    qint64 price = 0;
    std::optional<qint64> code;
    std::optional<qint64> year;
    std::optional<bool> deleted;
    std::optional<QString> sinapse;
    std::optional<QString> originalTitle;
    std::optional<bool> release;

    friend bool operator==(const Film&, const Film&) = default;
};

struct Customer {
    QString id;
    QString name;
    QString phone;
    std::optional<qint64> code;
    std::optional<QString> address;
    std::optional<QString> city;
    std::optional<QString> state;
    std::optional<QString> zip;
    std::optional<bool> deleted;

    friend bool operator==(const Customer&, const Customer&) = default;
};

struct Rental {
    QString id;
    QString film;
    QString customer;
    Instant start;
    Instant due;
    std::optional<Instant> returned;
    qint64 price = 0;
    qint64 finePerDay = 0;
    std::optional<qint64> fine;
    std::optional<bool> rewound;
    std::optional<qint64> rewindFee;
    std::optional<qint64> copy;

    friend bool operator==(const Rental&, const Rental&) = default;
};

struct Entry {
    QString id;
    Instant date;
    QString description;
    qint64 amount = 0;

    friend bool operator==(const Entry&, const Entry&) = default;
};

struct Store {
    std::optional<qint64> reportRentalBaseline;
    std::optional<QString> locadoraName;
    QList<Film> films;
    QList<Customer> customers;
    QList<Rental> rentals;
    QList<Entry> entries;

    friend bool operator==(const Store&, const Store&) = default;
};

// A fresh identifier: a random UUID, upper case, without braces.
QString newIdentifier();
