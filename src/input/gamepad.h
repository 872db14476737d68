// The four gamepad slots. Raw numbers follow what an XInput pad reports through SDL 2: buttons 0 to 3 are the d-pad up,
// down, left, right, 4 Start, 10 A; axes 0 and 1 the left stick, 2 and 3 the right one, 4 and 5 the triggers.
#pragma once

#include <array>
#include <bitset>

#include "core/platform.h"

struct StickPosition {
  float x = 0.0f;
  float y = 0.0f;  ///< up is positive
};

class Gamepad {
 public:
  static constexpr int kButtonUp = 0;
  static constexpr int kButtonDown = 1;
  static constexpr int kButtonLeft = 2;
  static constexpr int kButtonRight = 3;
  static constexpr int kButtonStart = 4;
  static constexpr int kButtonA = 10;
  static constexpr int kRightTrigger = 5;
  static constexpr float kFullTilt = 30767.0f;  ///< raw range outside the dead zone of 2000

  /// Reads the buttons and then the axes; the buttons before become the previous ones.
  void UpdateButtons();
  void UpdateAxes();

  bool IsConnected() const { return GetPlatform().IsGamepadConnected(index); }
  /// Buttons 0 to 15; false for any other.
  bool IsButtonDown(int button) const;
  /// Held now and not in the frame before.
  bool IsButtonTriggered(int button) const;
  /// Each axis from -1 to 1 with a dead zone of its own; (0, 0) without a device.
  StickPosition LeftStick() const { return Stick(0); }
  StickPosition RightStick() const { return Stick(2); }
  /// Whether the right trigger is pulled more than half way.
  bool IsTriggerHeld() const;

  int index = 0;  ///< slot, and the index of the device opened into it
  std::array<int, kGamepadAxes> axes{};

 private:
  StickPosition Stick(std::size_t firstAxis) const;

  std::bitset<kGamepadButtons> buttons_;
  std::bitset<kGamepadButtons> previousButtons_;
};

namespace Input {

/// The pad of a slot, 0 to 3.
Gamepad& GetGamepad(int slot);
/// Forgets what the pads held.
void ResetGamepads();
/// Opens devices 0 to 3 into the four slots anew; at start-up and whenever devices come or go.
void ReopenGamepads();

}  // namespace Input
