#include "screens/HomeScreen.h"

#include "look/DOSButton.h"
#include "look/SplashView.h"
#include "screens/ScreenHost.h"

void HomeScreen::show(ScreenHost& host) {
    auto* home = new SplashView;
    home->setBorderWidth(0);
    home->enterButton()->hide();
    home->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    host.addBody(home, 1);
}
