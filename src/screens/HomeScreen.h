#pragma once

class ScreenHost;

// The main menu's own screen: the title card without its button, filling the body.
class HomeScreen {
public:
    static void show(ScreenHost& host);
};
