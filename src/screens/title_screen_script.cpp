#include "screens/title_screen_script.h"

#include <memory>

#include "core/game_object.h"
#include "core/run_log.h"
#include "core/script_box.h"
#include "input/gamepad.h"
#include "match/episode/new_game.h"
#include "screens/screen_input.h"
#include "screens/screen_picture.h"
#include "screens/start_up.h"

namespace {

void StartFirstGame() {
  FinishStartUp();
  NewGame();
}

}  // namespace

void TitleScreenScript::Initialize() {
  GetStartUp().titleWaiting = true;
  GetStartUp().titleArmed.reset();
  joystickCount_ = GetPlatform().GetJoystickCount();
}

// A press counts only after a frame without any, so that the press that ended the screen before does not end this one.
void TitleScreenScript::Update(float /*step*/) {
  StartUp& startUp = GetStartUp();
  for (int slot = 0; slot < kGamepadSlots; ++slot) {
    const auto bit = static_cast<std::size_t>(slot);
    const bool pressed = IsContinueHeld(slot) || IsContinueKeyHeld();
    if (startUp.titleArmed[bit] && pressed)
      owner->alive = false;
    else if (startUp.titleWaiting && !pressed)
      startUp.titleArmed.set(bit);
  }
  if (GetPlatform().GetJoystickCount() == joystickCount_) return;
  Input::ReopenGamepads();
  joystickCount_ = GetPlatform().GetJoystickCount();
}

TitleScreenScript::~TitleScreenScript() { LeaveScreen(StartFirstGame); }

void CreateTitleScreen() {
  LogEvent("screen title");
  CreateFullScreenPicture("title", "QualityTitleBrinewhirlScreen.png")
      .Get<ScriptBox>()
      ->AddScript(std::make_unique<TitleScreenScript>());
}
