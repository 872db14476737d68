#include "match/player/dizzy.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/game_time.h"
#include "core/run_log.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "match/player/character_controller.h"
#include "physics/rigid_body.h"
#include "scripts/archetype.h"
#include "scripts/props/follow.h"

void Dizzy::TakeControl(bool taken) const {
  if (CharacterController* controller = FindController(*owner)) controller->stunned = taken;
}

void Dizzy::Stun() {
  Audio::Play(Sound::kSquidDizzy, Audio::kOneShot);
  LogEvent("stun %s", owner->name.c_str());
  stunStart_ = Time().elapsedTime;
  stunned_ = true;
  TakeControl(true);
  Spin();
  ShowStars();
}

void Dizzy::Spin() {
  if (auto* body = owner->Get<GalePhysics::RigidBody>())
    body->angularVelocity = {0.0f, 0.0f, spinBack_ ? -kSpinSpeed : kSpinSpeed};
  spinBack_ = !spinBack_;
}

// The stars end by themselves or with the player.
void Dizzy::ShowStars() const {
  const GameObject* stars = CreateFromArchetype("stunstars");
  if (stars == nullptr) return;
  stars->GetTransform().position = owner->GetTransform().position;
  if (ScriptBox* scripts = stars->Get<ScriptBox>()) scripts->AddScript(std::make_unique<Follow>(owner->id, Vec3{}));
}

void Dizzy::Update(float /*step*/) {
  if (!stunned_ || !(Time().elapsedTime > stunStart_ + kDuration)) return;
  TakeControl(false);
  stunned_ = false;
}

Dizzy* FindDizzy(const GameObject& object) {
  ScriptBox* scripts = object.Get<ScriptBox>();
  return scripts == nullptr ? nullptr : static_cast<Dizzy*>(scripts->GetScript("dizzy"));
}

void Dizzy::AddToTweakBar(FieldBar& bar) { bar.AddEmptyGroup("dizzy"); }
