#include "screens/logo_screen_script.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "core/transform.h"
#include "graphics/preload_list.h"
#include "graphics/renderer.h"
#include "screens/screen_input.h"
#include "screens/start_up.h"

namespace {

constexpr float kSpinnerSpeed = 7.0f;  // radians a second of game time

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
  loadingThread_ = std::jthread(Audio::LoadEffects);
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
  if (LoadNextAsset()) FinishLoading();
}

void LogoScreenScript::FinishLoading() {
  WaitForThread();
  GetStartUp().loading = false;
  while (!LoadNextAsset()) {
  }
  KillLoadingSigns();
}

void LogoScreenScript::WaitForThread() {
  if (loadingThread_.joinable()) loadingThread_.join();
}

LogoScreenScript::~LogoScreenScript() {
  if (IsStartUpAbandoned()) return;
  if (GetStartUp().loading) FinishLoading();
  LeaveScreen(GetStartUp().skipRequested ? CreateTitleAfterSkip : CreateSplashScreen);
}
