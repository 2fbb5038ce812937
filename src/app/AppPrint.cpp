#include "app/App.h"

// Printed report: not written yet.

void App::printReport() {}
