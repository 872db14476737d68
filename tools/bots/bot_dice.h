// A bot's own random numbers: the game's stream is the same whoever plays. The same on every platform, which the
// standard's distributions are not.
#pragma once

#include <cstdint>
#include <random>

class BotDice {
 public:
  BotDice(std::uint32_t seed, int seat) : engine_((std::uint64_t{seed} << 8) + static_cast<std::uint64_t>(seat)) {}

  /// From `low` to below `high`.
  float Between(float low, float high) {
    const auto unit = static_cast<float>(engine_() >> 40) * (1.0f / (1 << 24));
    return low + (high - low) * unit;
  }

 private:
  std::mt19937_64 engine_;
};
