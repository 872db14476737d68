// The game's one random stream: a 15-bit linear congruential generator, the same on every platform, so that a match
// replays from its input alone. Main thread only.
#pragma once

#include <cstdint>

/// The largest value Random() gives.
inline constexpr int kRandomMax = 32767;

/// Next number, 0 to kRandomMax: x = 214013 x + 2531011, of which bits 16 to 30.
int Random();

/// Sets the generator's state; the game starts with 10.
void SeedRandom(std::uint32_t seed);

/// The present state: SeedRandom of it continues the same sequence.
std::uint32_t RandomState();
