// The sticks of the pads as a menu takes them: a tilt moves the selection once, and again only after both sticks of the
// pad were back near the centre.
#pragma once

#include <array>

#include "core/platform.h"

class MenuSticks {
 public:
  enum class Move { kNone, kPrevious, kNext };

  /// When the first menu opens: a stick that a player holds to aim with must be let go before it moves anything.
  void Begin();
  /// Once a frame while a menu is open; slot 0 to 3.
  Move Take(int slot);

 private:
  std::array<bool, kGamepadSlots> stickReleased_ = {true, true, true, true};
};
