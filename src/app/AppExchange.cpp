#include "app/App.h"

// CSV import, screen export and backup: not written yet.

void App::exportCSV() {}
void App::backup() {}
void App::importFilmCSV() {}
