// The game's one random stream: a 15-bit linear congruential generator, the same on every platform, so that a match
// replays from its input alone. Main thread only. Each range below draws one number and keeps its order of operations:
// another order rounds differently, and a replay ends elsewhere.
#pragma once

#include <cstddef>
#include <cstdint>

/// The largest value Random() gives.
inline constexpr int kRandomMax = 32767;
/// The generator's state at the start of the program.
inline constexpr std::uint32_t kFirstSeed = 10;

/// Next number, 0 to kRandomMax: x = 214013 x + 2531011, of which bits 16 to 30.
int Random();

/// Sets the generator's state; the game starts with kFirstSeed.
void SeedRandom(std::uint32_t seed);

/// The present state: SeedRandom of it continues the same sequence.
std::uint32_t RandomState();

/// 0 to 1.
float RandomUnit();
/// 0 to `most`: Random() / (kRandomMax / most).
float RandomUpTo(float most);
/// 0 to `whole`: whole * Random() / kRandomMax.
float RandomPartOf(float whole);
/// -half to half: RandomUpTo(2 half) - half.
float RandomAround(float half);
/// Random() / divisor, a whole number: up to kRandomMax / divisor, a little above the whole part of that.
float RandomOver(int divisor);
/// 0 to count - 1; `count` is above 0.
std::size_t RandomIndex(std::size_t count);
