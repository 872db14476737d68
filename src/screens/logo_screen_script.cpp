#include "screens/logo_screen_script.h"

#include <memory>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "core/run_log.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/preload_list.h"
#include "graphics/renderer.h"
#include "screens/screen_input.h"
#include "screens/screen_picture.h"
#include "screens/splash_screen_logic.h"
#include "screens/start_up.h"
#include "screens/title_screen_script.h"
#include "scripts/props/death_timer.h"

namespace {

constexpr float kSpinnerSpeed = 7.0f;  // radians a second of game time
constexpr Vec3 kSpinnerPlace = {1.0f, -4.0f, 0.0f};
constexpr Vec3 kLoadingTextPlace = {1.0f, -6.0f, 0.0f};
constexpr Vec3 kLoadingTextScale = {6.0f, 2.0f, 0.0f};

void KillIfThere(std::uint32_t id) {
  if (GameObject* object = Objects().GetObject(id)) object->alive = false;
}

void KillLoadingSigns() {
  KillIfThere(GetStartUp().spinnerObject);
  KillIfThere(GetStartUp().loadingTextObject);
}

void CreateTitleAfterSkip() {
  Print("Title Created\n");
  CreateTitleScreen();
}

}  // namespace

void LogoScreenScript::Initialize() {
  for (const char* picture :
       {"loadingtext.png", "rp.png", "HarborLogo.png", "Marlo_Controls.png", "QualityTitleBrinewhirlScreen.png"})
    GetRenderer().LoadTexture(picture);
  effects_.Start([loader = Audio::EffectsLoader{}]() mutable { return loader.LoadNext(); });
  Audio::Play(Sound::kTitleMusic, Audio::kLongLived);
}

void LogoScreenScript::Update(float step) {
  StartUp& startUp = GetStartUp();
  if (!startUp.loading && IsSkipRequested()) startUp.skipRequested = true;
  if (startUp.loading) Load(step);
  if (startUp.loading || !startUp.skipRequested) return;
  owner->alive = false;
  KillLoadingSigns();
}

void LogoScreenScript::Load(float step) {
  StartUp& startUp = GetStartUp();
  startUp.spinnerAngle += step * kSpinnerSpeed;
  if (GameObject* spinner = Objects().GetObject(startUp.spinnerObject))
    spinner->GetTransform().orientation = QuaternionFromZ(startUp.spinnerAngle);
  effects_.Update();
  if (LoadNextAsset()) FinishLoading();
}

void LogoScreenScript::FinishLoading() {
  FinishEffects();
  GetStartUp().loading = false;
  while (!LoadNextAsset()) {
  }
  KillLoadingSigns();
}

LogoScreenScript::~LogoScreenScript() {
  if (IsChainEnded()) return;
  if (GetStartUp().loading) FinishLoading();
  LeaveScreen(GetStartUp().skipRequested ? CreateTitleAfterSkip : CreateSplashScreen);
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

void AbandonStartUp() {
  EndChain();
  const GameObject* logo = Objects().GetObject(GetStartUp().logoObject);
  const auto* scripts = logo == nullptr ? nullptr : logo->Get<ScriptBox>();
  if (Script* script = scripts == nullptr ? nullptr : scripts->GetScript("LogoScreenScript"))
    static_cast<LogoScreenScript*>(script)->FinishEffects();
}
