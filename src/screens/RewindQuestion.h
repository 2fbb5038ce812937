#pragma once

#include <QString>
#include <optional>

class ScreenHost;

// "FITA FOI REBOBINADA? [S/N]", asked before every return: true for rewound, false for
// not (the rewind fee is charged), nothing when the operator cancels.
std::optional<bool> askRewound(ScreenHost& host, const QString& text);

// The question's text on the returns list: the title, the fine a return now charges,
// and what each answer does.
QString rewindQuestionText(const QString& title, qint64 fine);
