#include "match/whale/whale_course.h"

#include <utility>

#include "core/random.h"

namespace {

constexpr int kSwaps = 10;
constexpr int kFirstSweep = 3;
constexpr std::array<float, WhaleCourse::kPatterns> kRowY = {-3.3f, -6.3f, -10.43f, -10.43f, -6.3f, -3.3f};

}  // namespace

int WhaleCourse::TakePattern() {
  if (taken == kPatterns) {
    for (int i = 0; i < kPatterns; ++i) patterns[static_cast<std::size_t>(i)] = i;
    for (int i = 0; i < kSwaps; ++i) {
      const std::size_t first = RandomIndex(kPatterns);
      std::size_t second = first;
      while (second == first) second = RandomIndex(kPatterns);
      std::swap(patterns[first], patterns[second]);
    }
    taken = 0;
  }
  return patterns[static_cast<std::size_t>(taken++)];
}

bool WhaleCourse::IsSweep(int pattern) { return pattern >= kFirstSweep; }

float WhaleCourse::RowOf(int pattern) { return kRowY[static_cast<std::size_t>(pattern)]; }

void WhaleCourse::Enter(SweepState state) {
  sweepState = state;
  timer = 0.0f;
}

void WhaleCourse::TurnRound() {
  rightward = !rightward;
  sweeping = false;
  Enter(SweepState::kBegin);
}
