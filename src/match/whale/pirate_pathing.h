// Sends its owner, the whale, across the stage in passes: from one side to the other in one of three rows, straight
// through or with a halt in the middle. There is one course, which all instances share; making one starts it anew.
#pragma once

#include <array>

#include "core/script.h"

/// Where the whale is on its course.
struct WhaleCourse {
  static constexpr int kPatterns = 6;

  float pause = 0.0f;      ///< seconds of game time to the next placing; stands still during a sweep
  bool rightward = false;  ///< it swims from left to right
  bool sweeping = false;
  int sweepState = 0;  ///< 0 to 5, see pirate_pathing.cpp
  float timer = 0.0f;  ///< seconds of game time in the sweep state
  float stopX = 0.0f;
  float cruiseSpeed = 0.0f;               ///< units per second, signed
  std::array<int, kPatterns> patterns{};  ///< the present round
  int taken = kPatterns;                  ///< patterns of the round that have been swum
};

class PiratePathing final : public Script {
 public:
  PiratePathing();

  void Update(float step) override;
  const char* GetName() const override { return "PiratePathing"; }

  /// The owner dies instead of being placed once more.
  void Finish() { finished_ = true; }

  static const WhaleCourse& GetCourse();

 private:
  void Place();
  void Sweep(float step);
  void Erupt() const;
  bool HasReached(float x) const;

  bool finished_ = false;
};
