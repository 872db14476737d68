#include "core/random.h"

#include "core/scene_state.h"

namespace {

struct Stream {
  std::uint32_t state = kFirstSeed;
};

Stream& Get() {
  static SceneState<Stream> stream;
  return *stream;
}

constexpr auto kMost = static_cast<float>(kRandomMax);

float Draw() { return static_cast<float>(Random()); }

}  // namespace

int Random() {
  std::uint32_t& state = Get().state;
  state = 214013u * state + 2531011u;
  return static_cast<int>((state >> 16) & 0x7fffu);
}

void SeedRandom(std::uint32_t seed) { Get().state = seed; }

std::uint32_t RandomState() { return Get().state; }

float RandomUnit() { return Draw() / kMost; }
float RandomUpTo(float most) { return Draw() / (kMost / most); }
float RandomPartOf(float whole) { return whole * Draw() / kMost; }
float RandomAround(float half) { return RandomUpTo(2.0f * half) - half; }
float RandomOver(int divisor) { return Draw() / static_cast<float>(divisor); }
std::size_t RandomIndex(std::size_t count) { return static_cast<std::size_t>(Random()) % count; }
