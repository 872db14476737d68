// Erupts cannonballs upwards in bursts. Nothing erupts before somebody has turned the fountains on, all at once; making
// a fountain turns them off again.
#pragma once

#include "core/script.h"

class Fountain final : public Script {
 public:
  static constexpr float kBurstLength = 1.5f;  ///< seconds of game time
  static constexpr float kMaxShotGap = 0.2f;   ///< seconds of game time between two shots, at most
  static constexpr float kSpread = 30.0f;      ///< degrees to either side of straight up
  static constexpr float kShotSpeed = 3.0f;    ///< world units per body second

  Fountain();

  void Update(float step) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "fountain"; }

  /// Asks for a burst, which begins with the next update that finds the fountains on. A new fountain is asked already.
  void Trigger() { triggered_ = true; }

 private:
  void Fire() const;

  float nextShot_ = 0.0f;    // game time
  float burstStart_ = 0.0f;  // game time
  bool triggered_ = true;
  bool bursting_ = false;
};

/// Lets the fountains erupt that have been triggered.
void TurnFountainsOn();
