// The effects of the game: which event each number is, and what is decoded before the match.
#include "audio/audio.h"
#include "audio/sound_ids.h"

namespace Audio {

namespace {

struct Registration {
  int kind;
  int id;
  const char* name;
};

constexpr Registration kEvents[] = {
    {kEffect, Sound::kSquidCollision, "Squid/Squid_Collision"},
    {kEffect, Sound::kCharge, "Squid/Charge"},
    {kEffect, Sound::kRelease, "Squid/Release"},
    {kEffect, Sound::kChainHit, "Squid/Chain_Hit"},
    {kMusic, Sound::kPodiumMusic, "Marlo_Baha"},
    {kEffect, Sound::kSquidDizzy, "Squid/Squid_Dizzy"},
    {kEffect, Sound::kPulse, "Squid/Pulse_Wave"},
    {kEffect, Sound::kWhaleLaugh, "Whale/Whale_Laugh"},
    {kEffect, Sound::kFishLarge, "Fish/Fish_Large"},
    {kEffect, Sound::kFishSmall, "Fish/Fish_Small"},
    {kEffect, Sound::kPufferExhale, "Fish/Puffer_Exhale"},
    {kEffect, Sound::kPufferPuff1, "Fish/Puffer_Puff_01"},
    {kEffect, Sound::kPufferPuff2, "Fish/Puffer_Puff_02"},
    {kEffect, Sound::kCrown, "Objectives/Crown"},
    {kEffect, Sound::kObjectiveChange, "Objectives/Objective_Change"},
    {kEffect, Sound::kBeachBallHit, "Objectives/BeachBall_Hit"},
    {kEffect, Sound::kRingLose, "Objectives/Ring_Lose"},
    {kEffect, Sound::kRingPickup, "Objectives/Ring_Pickup"},
    {kEffect, Sound::kWinJingle, "Objectives/Win"},
    {kEffect, Sound::kGoldenFish, "Objectives/GoldenFish"},
    {kEffect, Sound::kBubbleBarrage, "Whale/Whale_Bubble_Barrage"},
    {kEffect, Sound::kSandHit, "Squid/Sand_Hit"},
    {kEffect, Sound::kPointBubble, "HUD/Point_Bubble"},
    {kEffect, Sound::kMenuScroll, "Menu/Scroll"},
    {kEffect, Sound::kMenuSelect, "Menu/Select"},
};

// The beach ball stands here twice, which costs nothing, and the objective change, which nothing plays, not at all.
constexpr int kPrepared[] = {
    Sound::kSquidCollision, Sound::kCharge,      Sound::kRelease,      Sound::kChainHit,      Sound::kBeachBallHit,
    Sound::kSquidDizzy,     Sound::kPodiumMusic, Sound::kWhaleLaugh,   Sound::kFishLarge,     Sound::kFishSmall,
    Sound::kPufferExhale,   Sound::kPufferPuff1, Sound::kPufferPuff2,  Sound::kGoldenFish,    Sound::kPointBubble,
    Sound::kMenuScroll,     Sound::kMenuSelect,  Sound::kBeachBallHit, Sound::kCrown,         Sound::kRingPickup,
    Sound::kRingLose,       Sound::kSandHit,     Sound::kPulse,        Sound::kBubbleBarrage, Sound::kWinJingle,
};

}  // namespace

void LoadEffects() {
  for (const Registration& event : kEvents) AddEvent(event.kind, event.id, event.name);
  for (const int id : kPrepared) Prepare(id, id == Sound::kPodiumMusic ? 1 : 0);
  GetBus("SFX");
  GetBus("Music");
}

}  // namespace Audio
