// The mouse as the first player's seat while no pad holds it: the left button charges, letting it go launches, and the
// aim points to the cursor. It takes part from its first press in play on; before that it changes nothing.
#pragma once

#include <cstdint>

#include "physics/math/vec3.h"

class MouseSeat {
 public:
  /// One frame in which the seat is the mouse's. The press that counts is one in play: not on the editor's bars.
  void Update();
  /// Somebody else has the seat; the mouse takes part again from its next press on.
  void Leave();

  bool HasJoined() const { return joined_; }
  bool IsHeld() const { return held_; }
  /// Unit vector from `place` (world units) to the cursor; `before` when it is right there.
  static Vec3 AimFrom(const Vec3& place, const Vec3& before);

 private:
  void ShowMark();
  void RemoveMark();

  bool joined_ = false;
  bool held_ = false;
  std::uint32_t markId_ = 0;  // 0: not shown
};
