#pragma once

class ScreenHost;

// The cash book's own commands: a line typed by the operator, through the shop's
// cash-entry rule, and the closing of one day. The list itself is one of the
// shell's lists.
class CashBook {
public:
    static void cashEntry(ScreenHost& host);
    static void closing(ScreenHost& host);
};
