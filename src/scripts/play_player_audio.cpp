#include "scripts/play_player_audio.h"

#include <string_view>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/player_name.h"
#include "physics/contact.h"

namespace {

struct NamedSound {
  std::string_view name;
  Sound id;
};

// "Nameless" is what an object is called that nobody has named.
constexpr NamedSound kSounds[] = {
    {"barnicle", Sound::kBarnacle},   {"whale", Sound::kWhaleLaugh}, {"fish1", Sound::kFishLarge},
    {"Nameless", Sound::kFishLarge},  {"fish2", Sound::kFishSmall},  {"chain1", Sound::kChainHit},
    {"chain2", Sound::kChainHit},     {"chain3", Sound::kChainHit},  {"chain4", Sound::kChainHit},
    {"goldfish", Sound::kGoldenFish},
};

}  // namespace

void PlayPlayerAudioScript::OnContact(const GalePhysics::Contact& contact) {
  const std::string_view name = contact.secondOwner->name;
  if (IsPlayerName(name)) Audio::Play(Sound::kSquidCollision, Audio::kOneShot);
  for (const NamedSound& sound : kSounds)
    if (name == sound.name) Audio::Play(sound.id, Audio::kOneShot);
}

void PlayPlayerAudioScript::AddToTweakBar(FieldBar& bar) { bar.AddEmptyGroup("PlayPlayerAudioScript"); }
