#include "app/App.h"

// Returns: not written yet.

void App::selectRental() {}
void App::returnRental() {}
