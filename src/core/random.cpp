#include "core/random.h"

namespace {
std::uint32_t state = 1;
}

int Random() {
  state = 214013u * state + 2531011u;
  return static_cast<int>((state >> 16) & 0x7fffu);
}

void SeedRandom(std::uint32_t seed) { state = seed; }

std::uint32_t RandomState() { return state; }
