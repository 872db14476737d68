// Where the whale swims: passes from one side to the other in one of three rows, straight through or with a halt in the
// middle (a sweep), six patterns in a random order a round. There is one course, which all whales share.
#pragma once

#include <array>

struct WhaleCourse {
  static constexpr int kPatterns = 6;
  enum class SweepState { kBegin, kApproach, kSlowDown, kCrawl, kSpeedUp, kLeave };

  /// 1 from left to right, -1 back.
  float Direction() const { return rightward ? 1.0f : -1.0f; }
  /// The next pattern of the round, 0 to kPatterns - 1; a new round is shuffled first, by random numbers.
  int TakePattern();
  /// Whether a pattern halts in the middle.
  static bool IsSweep(int pattern);
  /// The height at which a pattern is swum, world units.
  static float RowOf(int pattern);
  void Enter(SweepState state);
  /// The sweep is over: the next pass goes the other way.
  void TurnRound();

  float pause = 0.0f;      ///< seconds of game time to the next placing; stands still during a sweep
  bool rightward = false;  ///< it swims from left to right
  bool sweeping = false;
  SweepState sweepState = SweepState::kBegin;
  float timer = 0.0f;  ///< seconds of game time in the sweep state
  float stopX = 0.0f;
  float cruiseSpeed = 0.0f;               ///< units per body second, signed
  std::array<int, kPatterns> patterns{};  ///< the present round
  int taken = kPatterns;                  ///< patterns of the round that have been swum
};
