// A platform without window, clock and devices: a window that is never seen, at first of 1280 x 720, events that a
// script queues, and gamepads whose state it sets. Runs as fast as the machine allows.
#pragma once

#include <array>
#include <set>
#include <vector>

#include "core/platform.h"

class ScriptedPlatform final : public Platform {
 public:
  /// The raw axis value of a trigger at rest.
  static constexpr std::int16_t kTriggerRest = -32768;
  /// Of any axis of a pad that has just come.
  static constexpr std::int16_t AxisAtRest(int axis) { return axis < kFirstTrigger ? std::int16_t{0} : kTriggerRest; }

  /// Queues an event for the next PumpEvents.
  void Push(const SDL_Event& event) { events_.push_back(event); }
  /// Queues a key; one that goes down while it is down repeats.
  void PushKey(int keyCode, bool down);
  /// Queues the mouse's move in the window, and a button where it is then.
  void PushMouse(int x, int y);
  void PushClick(std::uint8_t button, bool down);
  void PushFocus(bool gained);
  /// The window has another size; an event is queued.
  void ResizeWindow(int width, int height);
  /// How many devices there are beyond the pads.
  void SetOtherDevices(int count) { otherDevices_ = count; }
  /// Connects an empty pad at rest or takes it away; a device event is queued. Slots 0 to 3.
  void ConnectPad(int slot, bool connected);
  /// Sets the state of a pad; nothing while it is not connected.
  void SetPadAxis(int slot, int axis, std::int16_t value);
  void SetPadButton(int slot, int button, bool down);

  void PumpEvents(EventRouter& router) override;
  WindowRect GetWindowRect() const override { return window_; }
  bool IsFullscreen() const override { return fullscreen_; }
  void SetFullscreen(bool fullscreen) override { fullscreen_ = fullscreen; }
  void ShowPointer(bool shown) override { pointerShown_ = shown; }
  bool IsPointerShown() const { return pointerShown_; }
  int GetJoystickCount() const override;
  void OpenGamepad(int slot) override;
  bool IsGamepadConnected(int slot) const override { return PadAt(slot).open; }
  bool GetGamepadButton(int slot, int button) const override;
  std::int16_t GetGamepadAxis(int slot, int axis) const override;

 private:
  static constexpr int kFirstTrigger = 4;

  struct Pad {
    bool present = false;
    bool open = false;
    std::array<std::int16_t, kGamepadAxes> axes{};
    std::array<bool, kGamepadButtons> buttons{};
  };
  Pad& PadAt(int slot) { return pads_[static_cast<std::size_t>(slot)]; }
  const Pad& PadAt(int slot) const { return pads_[static_cast<std::size_t>(slot)]; }

  std::vector<SDL_Event> events_;
  std::array<Pad, kGamepadSlots> pads_;
  std::set<int> keysDown_;
  int mouseX_ = 0;
  int mouseY_ = 0;
  WindowRect window_;
  int otherDevices_ = 0;
  bool fullscreen_ = true;
  bool pointerShown_ = false;
};
