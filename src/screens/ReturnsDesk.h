#pragma once

class ScreenHost;

// The commands of the rented and returns lists on the selected rental: its
// details, then the return with the rewind question.
class ReturnsDesk {
public:
    static void selectRental(ScreenHost& host);
    static void returnRental(ScreenHost& host);
};
