#pragma once

class ScreenHost;

// The returns list's other way to take a tape back: at another instant than now
// (found in the drop box) and with part or all of the fine forgiven.
class AdjustedReturnDesk {
public:
    static void adjustedReturn(ScreenHost& host);
};
