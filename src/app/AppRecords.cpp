#include "app/App.h"

// Record screens: not written yet.

void App::deleteSelected() {}
void App::restoreRecord() {}
void App::recordScreen(std::optional<QString>) {}
void App::enableEdit() {}

// The preview pictures the home screen until the film form exists.
void App::previewFilmForm() {
    showHome();
}
