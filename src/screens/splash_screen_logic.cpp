#include "screens/splash_screen_logic.h"

#include <memory>

#include "core/object_manager.h"
#include "core/run_log.h"
#include "core/script_box.h"
#include "screens/screen_input.h"
#include "screens/screen_picture.h"
#include "screens/start_up.h"
#include "screens/title_screen_script.h"
#include "scripts/props/death_timer.h"

void SplashScreenLogic::Update(float /*step*/) {
  if (!IsSkipRequested()) return;
  if (GameObject* splash = Objects().GetObject(GetStartUp().splashObject)) splash->alive = false;
}

SplashScreenLogic::~SplashScreenLogic() { LeaveScreen(CreateTitleScreen); }

void CreateSplashScreen() {
  LogEvent("screen notice");
  GameObject& splash = CreateFullScreenPicture("notice", "controllerrequire.png");
  GetStartUp().splashObject = splash.id;
  splash.Get<ScriptBox>()->AddScript(std::make_unique<SplashScreenLogic>());
  splash.Get<ScriptBox>()->AddScript(std::make_unique<DeathTimer>(kPictureTime));
}
