// The budget scheme, for players that a level sets up so: each press of the trigger launches along the stick and spends
// that much of a budget, which the gauge refills on request.
#pragma once

#include "input/gamepad.h"
#include "match/player/flight.h"

class BudgetRules {
 public:
  /// One frame in which the player has control. Shortens the aim to what is left; true: launch along it now.
  bool Fly(const Gamepad& pad, const Flight& flight);
  /// Asks the gauge for a refill, and waits for it.
  void RequestRefill(const std::string& gauge);

  bool charging = false;  ///< armed: the trigger was let go since the last launch
  float force = 10.0f;    ///< what is left of the budget
  bool locked = false;    ///< no control until the gauge has refilled
};
