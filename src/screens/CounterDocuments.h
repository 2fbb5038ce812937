#pragma once

#include <optional>

struct CounterAct;
class ScreenHost;

// The counter's printed documents a screen asks for: the customer's slip of the
// last rental or return, and the letters to customers who keep tapes too long.
class CounterDocuments {
public:
    // Nothing at all, not even a message, when no rental or return was done yet.
    static void printReceipt(ScreenHost& host, const std::optional<CounterAct>& lastAct);
    static void printOverdueNotices(ScreenHost& host);
};
