// What a frame stands on that is run again from a tape: its events and gamepads, and a window that nobody sees.
#pragma once

#include "editor/trial/tape.h"

class TapePlatform final : public Platform {
 public:
  /// The frame that is pumped next; it must outlive the frame's run.
  void Feed(const TapeFrame& frame) { frame_ = &frame; }

  void PumpEvents(EventRouter& router) override;
  WindowRect GetWindowRect() const override { return frame_->window; }
  int GetJoystickCount() const override { return frame_->pads->joysticks; }
  bool IsGamepadConnected(int slot) const override { return PadAt(slot).connected; }
  bool GetGamepadButton(int slot, int button) const override {
    return PadAt(slot).buttons[static_cast<std::size_t>(button)];
  }
  std::int16_t GetGamepadAxis(int slot, int axis) const override {
    return static_cast<std::int16_t>(PadAt(slot).axes[static_cast<std::size_t>(axis)]);
  }

 private:
  const PadsRead::Pad& PadAt(int slot) const { return frame_->pads->pads[static_cast<std::size_t>(slot)]; }

  const TapeFrame* frame_ = nullptr;
};
