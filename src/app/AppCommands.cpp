#include "app/App.h"

// Cash entry, shop name, suggestion, help and exit: not written yet.

void App::cashEntry() {}
void App::configureName() {}
void App::suggestHouse() {}
void App::helpScreen() {}
void App::exitProgram() {}
