#include "scripts/props/sand_logic.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/field_bar.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "scripts/archetype.h"
#include "scripts/fast_player.h"
#include "scripts/props/death_timer.h"

namespace {

constexpr int kPuffs = 3;
constexpr float kPuffTime = 0.35f;  // seconds of game time

void CreatePuff(const Vec3& place) {
  GameObject* puff = CreateFromArchetype("sandpoof");
  if (puff == nullptr) return;
  puff->GetTransform().position = place;
  ScriptBox* scripts = puff->Get<ScriptBox>();
  if (scripts == nullptr) scripts = &puff->Insert(std::make_unique<ScriptBox>());
  scripts->AddScript(std::make_unique<DeathTimer>(kPuffTime));
}

}  // namespace

void SandLogic::OnContact(const GalePhysics::Contact& contact) {
  if (!InvolvesFastPlayer(contact)) return;
  for (int i = 0; i < kPuffs; ++i) CreatePuff(contact.point);
  Audio::Play(Sound::kSandHit, Audio::kOneShot);
}

void SandLogic::AddToTweakBar(FieldBar& bar) { bar.AddEmptyGroup("sandlogic"); }
