#pragma once

class ScreenHost;

// The cash book's own command: a line typed by the operator, through the shop's
// cash-entry rule. The list itself is one of the shell's lists.
class CashBook {
public:
    static void cashEntry(ScreenHost& host);
};
