// The effects of the game: which event each number is, and what is decoded before the match.
#include <iterator>

#include "audio/audio.h"
#include "audio/sound_ids.h"

namespace Audio {

namespace {

struct Registration {
  EventKind kind;
  Sound id;
  const char* name;
};

constexpr Registration kEvents[] = {
    {EventKind::kEffect, Sound::kSquidCollision, "Squid/Squid_Collision"},
    {EventKind::kEffect, Sound::kCharge, "Squid/Charge"},
    {EventKind::kEffect, Sound::kRelease, "Squid/Release"},
    {EventKind::kEffect, Sound::kChainHit, "Squid/Chain_Hit"},
    {EventKind::kMusic, Sound::kPodiumMusic, "Marlo_Baha"},
    {EventKind::kEffect, Sound::kSquidDizzy, "Squid/Squid_Dizzy"},
    {EventKind::kEffect, Sound::kPulse, "Squid/Pulse_Wave"},
    {EventKind::kEffect, Sound::kWhaleLaugh, "Whale/Whale_Laugh"},
    {EventKind::kEffect, Sound::kFishLarge, "Fish/Fish_Large"},
    {EventKind::kEffect, Sound::kFishSmall, "Fish/Fish_Small"},
    {EventKind::kEffect, Sound::kPufferExhale, "Fish/Puffer_Exhale"},
    {EventKind::kEffect, Sound::kPufferPuff1, "Fish/Puffer_Puff_01"},
    {EventKind::kEffect, Sound::kPufferPuff2, "Fish/Puffer_Puff_02"},
    {EventKind::kEffect, Sound::kCrown, "Objectives/Crown"},
    {EventKind::kEffect, Sound::kObjectiveChange, "Objectives/Objective_Change"},
    {EventKind::kEffect, Sound::kBeachBallHit, "Objectives/BeachBall_Hit"},
    {EventKind::kEffect, Sound::kRingLose, "Objectives/Ring_Lose"},
    {EventKind::kEffect, Sound::kRingPickup, "Objectives/Ring_Pickup"},
    {EventKind::kEffect, Sound::kWinJingle, "Objectives/Win"},
    {EventKind::kEffect, Sound::kGoldenFish, "Objectives/GoldenFish"},
    {EventKind::kEffect, Sound::kBubbleBarrage, "Whale/Whale_Bubble_Barrage"},
    {EventKind::kEffect, Sound::kSandHit, "Squid/Sand_Hit"},
    {EventKind::kEffect, Sound::kPointBubble, "HUD/Point_Bubble"},
    {EventKind::kEffect, Sound::kMenuScroll, "Menu/Scroll"},
    {EventKind::kEffect, Sound::kMenuSelect, "Menu/Select"},
};

// The beach ball stands here twice, which costs nothing, and the objective change, which nothing plays, not at all.
constexpr Sound kPrepared[] = {
    Sound::kSquidCollision, Sound::kCharge,      Sound::kRelease,      Sound::kChainHit,      Sound::kBeachBallHit,
    Sound::kSquidDizzy,     Sound::kPodiumMusic, Sound::kWhaleLaugh,   Sound::kFishLarge,     Sound::kFishSmall,
    Sound::kPufferExhale,   Sound::kPufferPuff1, Sound::kPufferPuff2,  Sound::kGoldenFish,    Sound::kPointBubble,
    Sound::kMenuScroll,     Sound::kMenuSelect,  Sound::kBeachBallHit, Sound::kCrown,         Sound::kRingPickup,
    Sound::kRingLose,       Sound::kSandHit,     Sound::kPulse,        Sound::kBubbleBarrage, Sound::kWinJingle,
};

}  // namespace

void LoadEffects() {
  EffectsLoader loader;
  while (!loader.LoadNext()) {
  }
}

bool EffectsLoader::LoadNext() {
  if (next_ == 0)
    for (const Registration& event : kEvents) AddEvent(event.kind, event.id, event.name);
  if (next_ < std::size(kPrepared)) {
    const Sound id = kPrepared[next_++];
    Prepare(id, id == Sound::kPodiumMusic ? kLongLived : kOneShot);
    return false;
  }
  GetBus("SFX");
  GetBus("Music");
  return true;
}

}  // namespace Audio
