// The numbers by which the game knows its sounds. Music is 0, 1, 2 and 5, everything else an effect.
#pragma once

enum class Sound : int {
  kTitleMusic = 0,
  kMatchMusic = 1,
  kFastMatchMusic = 2,
  kRingPickup = 3,
  kRingLose = 4,
  kPodiumMusic = 5,
  kSquidCollision = 8,
  kSquidDizzy = 10,
  kMenuScroll = 11,
  kMenuSelect = 12,
  kCharge = 13,
  kRelease = 14,
  kPulse = 15,
  kBarnacle = 16,  ///< has no event: playing it only reports that
  kBubbleBarrage = 18,
  kBeachBallHit = 20,
  kWhaleLaugh = 21,
  kObjectiveChange = 23,
  kPointBubble = 24,
  kCrown = 25,
  kWinJingle = 26,
  kGoldenFish = 27,
  kChainHit = 28,
  kFishLarge = 32,
  kFishSmall = 33,
  kPufferExhale = 34,
  kPufferPuff1 = 35,
  kPufferPuff2 = 36,
  kSandHit = 38,
};

/// All numbers lie below.
inline constexpr int kSoundCount = 39;
