// A platform without window, clock and devices: a 1280 x 720 window that is never seen, events that a script queues,
// and gamepads whose state it sets. Runs as fast as the machine allows.
#pragma once

#include <array>
#include <vector>

#include "core/platform.h"

class ScriptedPlatform final : public Platform {
 public:
  /// The raw axis value of a trigger at rest.
  static constexpr std::int16_t kTriggerRest = -32768;

  /// Queues an event for the next PumpEvents.
  void Push(const SDL_Event& event) { events_.push_back(event); }
  /// Connects an empty pad at rest or takes it away; a device event is queued. Slots 0 to 3.
  void ConnectPad(int slot, bool connected);
  /// Sets the state of a pad; nothing while it is not connected.
  void SetPadAxis(int slot, int axis, std::int16_t value);
  void SetPadButton(int slot, int button, bool down);

  void PumpEvents(EventRouter& router) override;
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
  bool fullscreen_ = true;
  bool pointerShown_ = false;
};
