#include "screens/win_screen_logic.h"

#include <algorithm>
#include <string>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/field_bar.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/run_log.h"
#include "graphics/sprite.h"
#include "graphics/sprite_text.h"
#include "input/input.h"
#include "match/score/score_displays.h"
#include "screens/menu_system.h"
#include "screens/menus.h"
#include "screens/podium.h"
#include "screens/screen_input.h"
#include "scripts/archetype.h"

namespace {

// Seconds of game time that each stage lasts.
constexpr float kFinishTime = 2.0f;
constexpr float kFadeOutTime = 0.5f;
constexpr float kClearTime = 0.1f;
constexpr float kFadeInTime = 0.5f;
constexpr float kNever = 100000000.0f;
constexpr float kFadeSpeed = 510.0f / 255.0f;  // opacity, 0 to 1, a second of game time

void HideScores() {
  for (const char* name : kScoreObjects) {
    const GameObject* display = Objects().FindObjectByName(name);
    if (SpriteText* text = display == nullptr ? nullptr : display->Get<SpriteText>()) text->visible = false;
  }
}

}  // namespace

void WinScreenLogic::Initialize() {
  nextTime_ = Time().elapsedTime + kFinishTime;
  LogEvent("screen finish");
  CreateAllFromArchetype("finish");
}

void WinScreenLogic::Update(float /*step*/) {
  // A new game's first frame updates the old one's dead objects once more, with the press that started it.
  if (!owner->alive) return;
  const float fade = Time().frameStep * kFadeSpeed;
  if (stage_ == Stage::kFadeOut) Fade(fade);
  if (stage_ == Stage::kFadeIn) {
    Fade(-fade);
    HideScores();
  }
  if (stage_ == Stage::kWait) Leave();
  if (Time().elapsedTime >= nextTime_) Advance();
}

void WinScreenLogic::Fade(float change) const {
  const GameObject* fader = Objects().GetObject(faderId_);
  if (Sprite* sprite = fader == nullptr ? nullptr : fader->Get<Sprite>())
    sprite->a = std::clamp(sprite->a + change, 0.0f, 1.0f);
}

void WinScreenLogic::Advance() {
  const float now = Time().elapsedTime;
  switch (stage_) {
    case Stage::kFinish: {
      stage_ = Stage::kFadeOut;
      nextTime_ = now + kFadeOutTime;
      const GameObject* fader = CreateFromArchetype("fader");
      faderId_ = fader == nullptr ? 0 : fader->id;
      Audio::StopMusic();
      break;
    }
    case Stage::kFadeOut:
      stage_ = Stage::kClear;
      nextTime_ = now + kClearTime;
      ClearStage();
      BuildPodium();
      break;
    case Stage::kClear:
      stage_ = Stage::kFadeIn;
      nextTime_ = now + kFadeInTime;
      Objects().LoadLevel("winscreen");
      Audio::PlayWinJingle();
      break;
    case Stage::kFadeIn:
      stage_ = Stage::kWait;
      nextTime_ = kNever;
      Audio::Play(Sound::kPodiumMusic, Audio::kLongLived);
      LogEvent("screen podium");
      break;
    case Stage::kWait:
      break;
  }
}

void WinScreenLogic::ClearStage() const {
  for (int i = 0; i < kPlayers; ++i)
    if (GameObject* player = GetPlayerObject(i)) player->alive = false;
  for (const auto& object : Objects().GetObjects())
    if (!object->core && object.get() != owner && object->id != faderId_) object->alive = false;
}

void WinScreenLogic::AddToTweakBar(FieldBar& bar) {
  static std::string name;  // shown by the editor; has no effect
  bar.BeginGroup("WinScreenLogic");
  bar.Add("name", &name);
  bar.EndGroup();
}

// Slot after slot, so a key arms the screen and opens the menu in one frame; only the first pad arms it, and then every
// pad opens. Escape lets the menu be opened again.
void WinScreenLogic::Leave() {
  // Escape may close the menu by an event that is over before the key can be asked.
  if (!Menus().IsOpen()) exitRequested_ = false;
  const bool key = IsContinueKeyTriggered();
  for (int slot = 0; slot < kGamepadSlots; ++slot) {
    if (!exitArmed_) {
      exitArmed_ = key || IsContinueTriggered(0);
    } else if (!exitRequested_ && (key || IsContinueTriggered(slot))) {
      exitRequested_ = true;
      OpenEndMenu();
    }
    if (Input::IsKeyTriggered("esc")) exitRequested_ = false;
  }
}
