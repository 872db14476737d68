#include "match/whale/boss_health.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/field_bar.h"
#include "core/script_box.h"
#include "match/whale/pirate_pathing.h"
#include "scripts/fast_player.h"

void BossHealth::OnContact(const GalePhysics::Contact& contact) {
  if (!owner->alive || !IsFirstPlayerFast(contact)) return;
  Audio::Play(Sound::kWhaleLaugh, Audio::kOneShot);
  if (--health >= 1) return;
  if (Script* course = owner->Get<ScriptBox>()->GetScript("PiratePathing"))
    static_cast<PiratePathing*>(course)->Finish();
}

void BossHealth::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("BossHealth");
  bar.Add("health", &health);
  bar.EndGroup();
}
