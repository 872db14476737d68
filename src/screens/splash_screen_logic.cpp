#include "screens/splash_screen_logic.h"

#include "core/object_manager.h"
#include "screens/screen_input.h"
#include "screens/start_up.h"

void SplashScreenLogic::Update(float /*step*/) {
  if (!IsSkipRequested()) return;
  if (GameObject* splash = Objects().GetObject(GetStartUp().splashObject)) splash->alive = false;
}

SplashScreenLogic::~SplashScreenLogic() { LeaveScreen(CreateTitleScreen); }
