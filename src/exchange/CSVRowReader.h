#pragma once

#include <QChar>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <functional>

// The film CSV's rows, read as a state machine fed piece by piece, so a file never
// has to be held whole. A piece may end anywhere, even between the two quotes of a
// doubled quote or between CR and LF: those wait for the next character. Rows whose
// fields are all blank are dropped; a malformed text throws FilmCSVError.
class CSVRowReader {
public:
    explicit CSVRowReader(std::function<void(const QStringList&)> onRow) : onRow_(std::move(onRow)) {}

    void feed(QStringView piece);
    void finish(); // the end of the text: an unfinished last row is handed on

private:
    void scanFirstLine(QChar c);
    void chooseDelimiter();
    void take(QChar c);
    void endField();
    void finishRow();

    std::function<void(const QStringList&)> onRow_;
    QChar delimiter_;
    QString head_;
    bool headInQuotes_ = false;
    qsizetype commas_ = 0;
    qsizetype semicolons_ = 0;
    QStringList row_;
    QString field_;
    bool inQuotes_ = false;
    bool closedQuote_ = false;
    bool pendingQuote_ = false;
    bool pendingLineFeed_ = false;
};
