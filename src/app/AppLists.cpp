#include "app/App.h"

// List screens: not written yet. The list sections show their tool and action rows only.

void App::showTable() {}
void App::addGenreFilter() {}
void App::toggleOrder() {}
void App::searchChanged() {}
void App::showCreate() {}
void App::selectRecord() {}
void App::editRecordFromList() {}
