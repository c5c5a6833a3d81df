#pragma once
// The splash shown while the program starts; a click dismisses it.
#include <QSplashScreen>

namespace synthara::ui {

class Splash final : public QSplashScreen {
    Q_OBJECT
  public:
    Splash();
};

}  // namespace synthara::ui
