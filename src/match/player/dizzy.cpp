#include "match/player/dizzy.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/game_time.h"
#include "core/run_log.h"
#include "core/script_box.h"
#include "match/player/character_controller.h"
#include "physics/rigid_body.h"
#include "scripts/archetype.h"
#include "scripts/props/follow.h"

void Dizzy::Initialize() { scripts_ = owner->Get<ScriptBox>(); }

CharacterController* Dizzy::FindController() const {
  return static_cast<CharacterController*>(scripts_->GetScript("CharacterController"));
}

void Dizzy::Stun() {
  Audio::Play(Sound::kSquidDizzy, Audio::kOneShot);
  LogEvent("stun %s", owner->name.c_str());
  stunStart_ = Time().elapsedTime;
  stunned_ = true;
  if (CharacterController* controller = FindController()) controller->stunned = true;
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
  ScriptBox* scripts = stars == nullptr ? nullptr : stars->Get<ScriptBox>();
  if (scripts != nullptr) scripts->AddScript(std::make_unique<Follow>(owner->id, Vec3{}));
}

void Dizzy::Update(float /*step*/) {
  if (!stunned_ || !(Time().elapsedTime > stunStart_ + kDuration)) return;
  if (CharacterController* controller = FindController()) controller->stunned = false;
  stunned_ = false;
}

Dizzy* FindDizzy(const GameObject& object) {
  ScriptBox* scripts = object.Get<ScriptBox>();
  return scripts == nullptr ? nullptr : static_cast<Dizzy*>(scripts->GetScript("dizzy"));
}

void Dizzy::AddToTweakBar(FieldBar& bar) { bar.AddEmptyGroup("dizzy"); }
