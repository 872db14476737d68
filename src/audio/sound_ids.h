// The numbers by which the game knows its sounds. Music is 0, 1, 2 and 5, everything else an effect.
#pragma once

namespace Sound {

inline constexpr int kTitleMusic = 0;
inline constexpr int kMatchMusic = 1;
inline constexpr int kFastMatchMusic = 2;
inline constexpr int kRingPickup = 3;
inline constexpr int kRingLose = 4;
inline constexpr int kPodiumMusic = 5;
inline constexpr int kSquidCollision = 8;
inline constexpr int kSquidDizzy = 10;
inline constexpr int kMenuScroll = 11;
inline constexpr int kMenuSelect = 12;
inline constexpr int kCharge = 13;
inline constexpr int kRelease = 14;
inline constexpr int kPulse = 15;
inline constexpr int kBarnacle = 16;  ///< has no event: playing it only reports that
inline constexpr int kBubbleBarrage = 18;
inline constexpr int kBeachBallHit = 20;
inline constexpr int kWhaleLaugh = 21;
inline constexpr int kObjectiveChange = 23;
inline constexpr int kPointBubble = 24;
inline constexpr int kCrown = 25;
inline constexpr int kWinJingle = 26;
inline constexpr int kGoldenFish = 27;
inline constexpr int kChainHit = 28;
inline constexpr int kFishLarge = 32;
inline constexpr int kFishSmall = 33;
inline constexpr int kPufferExhale = 34;
inline constexpr int kPufferPuff1 = 35;
inline constexpr int kPufferPuff2 = 36;
inline constexpr int kSandHit = 38;

inline constexpr int kCount = 39;

}  // namespace Sound
