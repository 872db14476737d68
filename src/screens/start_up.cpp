#include "screens/start_up.h"

#include <memory>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/object_manager.h"
#include "core/run_log.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/mesh_type.h"
#include "graphics/preload_list.h"
#include "graphics/renderer.h"
#include "graphics/sprite.h"
#include "input/input.h"
#include "match/new_game.h"
#include "screens/logo_screen_script.h"
#include "screens/menus.h"
#include "screens/splash_screen_logic.h"
#include "screens/title_screen_script.h"
#include "scripts/death_timer.h"

namespace {

constexpr float kPictureTime = 1.5f;  // seconds of game time that logo and notice stand
constexpr Vec3 kSpinnerPlace = {1.0f, -4.0f, 0.0f};
constexpr Vec3 kLoadingTextPlace = {1.0f, -6.0f, 0.0f};
constexpr Vec3 kLoadingTextScale = {6.0f, 2.0f, 0.0f};

struct Chain {
  bool finished = false;
  bool abandoned = false;
};

Chain& GetChain() {
  static Chain chain;
  return chain;
}

GameObject& CreatePicture(const char* name, const char* texture) {
  GameObject& object = *Objects().GetObject(Objects().CreateObject());
  object.name = name;
  object.Insert(std::make_unique<Sprite>()).texturePath = texture;
  object.Insert(std::make_unique<ScriptBox>());
  return object;
}

GameObject& CreateFullScreenPicture(const char* name, const char* texture) {
  GameObject& object = CreatePicture(name, texture);
  object.Get<Sprite>()->meshType = MeshType::kFullScreen;
  return object;
}

// Repeats of a held key would let the menu flicker.
void PressPauseKey() {
  if (!Input::IsKeyDown("esc")) TogglePauseMenu();
}

}  // namespace

StartUp& GetStartUp() {
  static StartUp startUp;
  return startUp;
}

// The order of the three decides what is drawn on top.
void CreateLogoScreen() {
  StartUp& startUp = GetStartUp();
  LogEvent("screen logo");
  GameObject& logo = CreateFullScreenPicture("logo", "HarborLogo.png");
  startUp.logoObject = logo.id;
  logo.Get<ScriptBox>()->AddScript(std::make_unique<LogoScreenScript>());
  logo.Get<ScriptBox>()->AddScript(std::make_unique<DeathTimer>(kPictureTime));
  GameObject& spinner = CreatePicture("loading spinner", "rp.png");
  spinner.GetTransform().position = kSpinnerPlace;
  startUp.spinnerObject = spinner.id;
  GameObject& label = CreatePicture("loading text", "loadingtext.png");
  label.GetTransform().position = kLoadingTextPlace;
  label.GetTransform().graphicsScale = kLoadingTextScale;
  startUp.loadingTextObject = label.id;
}

void CreateSplashScreen() {
  LogEvent("screen notice");
  GameObject& splash = CreateFullScreenPicture("notice", "controllerrequire.png");
  GetStartUp().splashObject = splash.id;
  splash.Get<ScriptBox>()->AddScript(std::make_unique<SplashScreenLogic>());
  splash.Get<ScriptBox>()->AddScript(std::make_unique<DeathTimer>(kPictureTime));
}

void CreateTitleScreen() {
  LogEvent("screen title");
  CreateFullScreenPicture("title", "QualityTitleBrinewhirlScreen.png")
      .Get<ScriptBox>()
      ->AddScript(std::make_unique<TitleScreenScript>());
}

bool IsLogoLoading() {
  const GameObject* logo = Objects().GetObject(GetStartUp().logoObject);
  return GetStartUp().loading && logo != nullptr && logo->alive;
}

void LeaveScreen(void (*createNext)()) {
  if (IsStartUpAbandoned()) return;
  if (IsMatchRunning())
    FinishStartUp();
  else
    createNext();
}

void FinishStartUp() {
  if (GetChain().finished) return;
  GetChain().finished = true;
  GetRenderer().SetScreenShader("wave");
  Audio::StopLongLived(Sound::kTitleMusic);
  Input::BindKeyDown(SDLK_ESCAPE, PressPauseKey);
}

void AbandonStartUp() {
  GetChain().abandoned = true;
  const GameObject* logo = Objects().GetObject(GetStartUp().logoObject);
  const auto* scripts = logo == nullptr ? nullptr : logo->Get<ScriptBox>();
  if (Script* script = scripts == nullptr ? nullptr : scripts->GetScript("LogoScreenScript"))
    static_cast<LogoScreenScript*>(script)->WaitForThread();
}

bool IsStartUpAbandoned() { return GetChain().abandoned; }

void ResetStartUp() {
  ResetPreload();
  GetStartUp() = {};
  GetChain() = {};
}
