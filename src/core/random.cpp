#include "core/random.h"

namespace {

std::uint32_t state = kFirstSeed;

constexpr auto kMost = static_cast<float>(kRandomMax);

float Draw() { return static_cast<float>(Random()); }

}  // namespace

int Random() {
  state = 214013u * state + 2531011u;
  return static_cast<int>((state >> 16) & 0x7fffu);
}

void SeedRandom(std::uint32_t seed) { state = seed; }

std::uint32_t RandomState() { return state; }

float RandomUnit() { return Draw() / kMost; }
float RandomUpTo(float most) { return Draw() / (kMost / most); }
float RandomPartOf(float whole) { return whole * Draw() / kMost; }
float RandomAround(float half) { return RandomUpTo(2.0f * half) - half; }
float RandomOver(int divisor) { return Draw() / static_cast<float>(divisor); }
std::size_t RandomIndex(std::size_t count) { return static_cast<std::size_t>(Random()) % count; }
