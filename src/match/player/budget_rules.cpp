#include "match/player/budget_rules.h"

#include "core/script_box.h"
#include "match/player/force_events.h"

bool BudgetRules::Fly(const Gamepad& pad, const Flight& flight) {
  if (!pad.IsTriggerHeld()) {
    charging = true;
    return false;
  }
  if (!charging) {
    if (pad.IsButtonDown(Gamepad::kButtonA)) RequestRefill(flight.gauge);
    return false;
  }
  const float length = Length(flight.aim);
  if (length > force) {
    flight.aim = Normalised(flight.aim) * force;
    force = 0.0f;
  } else {
    force -= length;
  }
  charging = false;
  return !(flight.aim == Vec3{});
}

void BudgetRules::RequestRefill(const std::string& gauge) {
  SendEvent(gauge, Event(ForceEvents::kReset));
  locked = true;
}
