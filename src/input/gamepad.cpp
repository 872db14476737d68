#include "input/gamepad.h"

namespace {

constexpr int kDeadZone = 2000;  // raw units
constexpr float kTriggerThreshold = 0.5f;

float AxisValue(int raw) {
  if (raw > kDeadZone) return static_cast<float>(raw - kDeadZone) / Gamepad::kFullTilt;
  if (raw < -kDeadZone) return static_cast<float>(raw + kDeadZone) / Gamepad::kFullTilt;
  return 0.0f;
}

}  // namespace

void Gamepad::UpdateButtons() {
  previousButtons_ = buttons_;
  for (int button = 0; button < kGamepadButtons; ++button)
    buttons_[static_cast<std::size_t>(button)] = GetPlatform().GetGamepadButton(index, button);
}

void Gamepad::UpdateAxes() {
  for (int axis = 0; axis < kGamepadAxes; ++axis)
    axes[static_cast<std::size_t>(axis)] = GetPlatform().GetGamepadAxis(index, axis);
}

bool Gamepad::IsButtonDown(int button) const {
  return button >= 0 && button < kGamepadButtons && buttons_[static_cast<std::size_t>(button)];
}

bool Gamepad::IsButtonTriggered(int button) const {
  return IsButtonDown(button) && !previousButtons_[static_cast<std::size_t>(button)];
}

bool Gamepad::IsTriggerHeld() const { return static_cast<float>(axes[kRightTrigger]) / kFullTilt > kTriggerThreshold; }

StickPosition Gamepad::Stick(std::size_t firstAxis) const {
  return {AxisValue(axes[firstAxis]), -AxisValue(axes[firstAxis + 1])};
}

namespace Input {

Gamepad& GetGamepad(int slot) {
  static std::array<Gamepad, kGamepadSlots> gamepads = [] {
    std::array<Gamepad, kGamepadSlots> made;
    for (std::size_t i = 0; i < made.size(); ++i) made[i].index = static_cast<int>(i);
    return made;
  }();
  return gamepads[static_cast<std::size_t>(slot)];
}

void ResetGamepads() {
  for (int slot = 0; slot < kGamepadSlots; ++slot) {
    GetGamepad(slot) = {};
    GetGamepad(slot).index = slot;
  }
}

void ReopenGamepads() {
  for (int slot = 0; slot < kGamepadSlots; ++slot) GetPlatform().OpenGamepad(slot);
}

}  // namespace Input
