#include "match/player/play_player_audio.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/player_name.h"
#include "match/player/bump_sounds.h"
#include "physics/contact.h"

void PlayPlayerAudioScript::OnContact(const GalePhysics::Contact& contact) {
  const std::string_view name = contact.secondOwner->name;
  if (IsPlayerName(name)) Audio::Play(Sound::kSquidCollision, Audio::kOneShot);
  for (const BumpSound& sound : kBumpSounds)
    if (name == sound.name) Audio::Play(sound.id, Audio::kOneShot);
}

void PlayPlayerAudioScript::AddToTweakBar(FieldBar& bar) { bar.AddEmptyGroup("PlayPlayerAudioScript"); }
