// The charge scheme, which every player of a match has: the held trigger charges, letting it go launches along the
// stick with what was charged. The gauge fills the charge and pays it out.
#pragma once

#include "match/player/charge_display.h"
#include "match/player/flight.h"

class ChargeRules {
 public:
  static constexpr float kFullCharge = 10.0f;

  /// One frame in which the player has control; `held`: the trigger is. The launch comes back from the gauge, inside
  /// this call.
  void Fly(bool held, const Flight& flight);
  /// Ends a charge without a launch; nothing when there is none. Its sound goes on.
  void Drop();

  bool charging = false;      ///< a charge is running
  float force = kFullCharge;  ///< the charge as the gauge last reported it

 private:
  void Begin(const Flight& flight);
  void Release(const Flight& flight);

  ChargeDisplay display_;
};
