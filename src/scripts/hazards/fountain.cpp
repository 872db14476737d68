#include "scripts/hazards/fountain.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/game_time.h"
#include "core/random.h"
#include "core/scene_state.h"
#include "core/transform.h"
#include "physics/math/trigonometry.h"
#include "scripts/hazards/cannonball.h"

namespace {

constexpr float kUp = 90.0f;     // degrees, in the world: the owner's own turn does not matter
constexpr float kMuzzle = 0.1f;  // world units from the owner's middle

bool& FountainsOn() {
  static SceneState<bool> on;
  return *on;
}

// Shown by the editor; nothing reads it.
bool madeItToTheEditor = false;

}  // namespace

void TurnFountainsOn() { FountainsOn() = true; }

Fountain::Fountain() { FountainsOn() = false; }

void Fountain::Update(float /*step*/) {
  if (!FountainsOn() || !owner->alive) return;  // a dead owner is updated once more in the frame of a new game
  const float now = Time().elapsedTime;
  if (triggered_) {
    burstStart_ = nextShot_ = now;
    triggered_ = false;
    bursting_ = true;
  }
  if (!bursting_) return;
  if (now > nextShot_) {
    Fire();
    nextShot_ = now + RandomPartOf(kMaxShotGap);
  }
  if (now > burstStart_ + kBurstLength) bursting_ = false;
}

void Fountain::Fire() const {
  Audio::Play(Sound::kBubbleBarrage, Audio::kOneShot);
  const float angle = (RandomAround(1.0f) * kSpread + kUp) * kPi / 180.0f;
  const Vec3 direction = {Cos(angle), Sin(angle), 0.0f};
  FireCannonball(owner->GetTransform().position + direction * kMuzzle, direction * kShotSpeed);
}

void Fountain::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("fountain");
  bar.Add("MadeItToTheEditor", &madeItToTheEditor);
  bar.EndGroup();
}
