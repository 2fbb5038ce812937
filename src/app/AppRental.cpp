#include "app/App.h"

// Rental screen: not written yet; section 0 shows an empty body.

void App::rentalScreen() {}
