// Which sound a player's bump makes, by the name of the object that was hit. Another player has one of its own.
#pragma once

#include <string_view>

#include "audio/sound_ids.h"

struct BumpSound {
  std::string_view name;
  Sound id;
};

// "Nameless" is what an object is called that nobody has named.
inline constexpr BumpSound kBumpSounds[] = {
    {"barnicle", Sound::kBarnacle},   {"whale", Sound::kWhaleLaugh}, {"fish1", Sound::kFishLarge},
    {"Nameless", Sound::kFishLarge},  {"fish2", Sound::kFishSmall},  {"chain1", Sound::kChainHit},
    {"chain2", Sound::kChainHit},     {"chain3", Sound::kChainHit},  {"chain4", Sound::kChainHit},
    {"goldfish", Sound::kGoldenFish},
};
