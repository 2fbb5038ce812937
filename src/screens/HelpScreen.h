#pragma once

class ScreenHost;

// The help section: the keys and the shop's rules on one page.
class HelpScreen {
public:
    static void show(ScreenHost& host);
};
