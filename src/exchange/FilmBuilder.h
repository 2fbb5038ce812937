#pragma once

#include "records/Records.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <optional>

// The films of a CSV made from its rows, the header first. It keeps its first fault
// instead of throwing it, because a reader fault anywhere in the text comes first.
// Without a result store it only checks, which costs no memory per record.
class FilmBuilder {
public:
    FilmBuilder(const Store& into, Store* result);

    void take(const QStringList& row);
    void finish() const; // throws FilmCSVError for the first fault, or a list without films
    qsizetype records() const { return std::max<qsizetype>(rows_ - 1, 0); }

private:
    using Column = std::optional<qsizetype>;

    void readHeader(const QStringList& header);
    void readRecord(const QStringList& record, qsizetype number);
    QString genre(const QString& cell);

    Store* result_;
    QSet<qint64> used_;
    qint64 next_ = 1;
    qsizetype rows_ = 0;
    std::optional<QString> fault_;
    QHash<QString, QString> genres_;
    qsizetype columns_ = 0;
    Column title_, code_, copies_, year_, price_, genre_, category_, synopsis_, original_;
};
