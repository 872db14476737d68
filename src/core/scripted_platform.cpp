#include "core/scripted_platform.h"

#include <algorithm>
#include <utility>

void ScriptedPlatform::PushKey(int keyCode, bool down) {
  SDL_Event event{};
  event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
  event.key.keysym.sym = keyCode;
  if (down)
    event.key.repeat = keysDown_.insert(keyCode).second ? 0 : 1;
  else
    keysDown_.erase(keyCode);
  Push(event);
}

void ScriptedPlatform::PushMouse(int x, int y) {
  SDL_Event event{};
  event.type = SDL_MOUSEMOTION;
  event.motion.x = mouseX_ = x;
  event.motion.y = mouseY_ = y;
  Push(event);
}

void ScriptedPlatform::PushClick(std::uint8_t button, bool down) {
  SDL_Event event{};
  event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
  event.button.button = button;
  event.button.x = mouseX_;
  event.button.y = mouseY_;
  Push(event);
}

void ScriptedPlatform::PushFocus(bool gained) {
  SDL_Event event{};
  event.type = SDL_WINDOWEVENT;
  event.window.event = gained ? SDL_WINDOWEVENT_FOCUS_GAINED : SDL_WINDOWEVENT_FOCUS_LOST;
  Push(event);
}

void ScriptedPlatform::ResizeWindow(int width, int height) {
  window_.width = width;
  window_.height = height;
  SDL_Event event{};
  event.type = SDL_WINDOWEVENT;
  event.window.event = SDL_WINDOWEVENT_SIZE_CHANGED;
  event.window.data1 = width;
  event.window.data2 = height;
  Push(event);
}

void ScriptedPlatform::ConnectPad(int slot, bool connected) {
  Pad pad;
  pad.present = connected;
  for (int axis = 0; connected && axis < kGamepadAxes; ++axis)
    pad.axes[static_cast<std::size_t>(axis)] = AxisAtRest(axis);
  PadAt(slot) = pad;
  SDL_Event event{};
  event.type = connected ? SDL_JOYDEVICEADDED : SDL_JOYDEVICEREMOVED;
  Push(event);
}

void ScriptedPlatform::SetPadAxis(int slot, int axis, std::int16_t value) {
  if (PadAt(slot).present) PadAt(slot).axes[static_cast<std::size_t>(axis)] = value;
}

void ScriptedPlatform::SetPadButton(int slot, int button, bool down) {
  if (PadAt(slot).present) PadAt(slot).buttons[static_cast<std::size_t>(button)] = down;
}

void ScriptedPlatform::PumpEvents(EventRouter& router) {
  // A pad that came or went counts in the frame of its event, before the pads are read.
  for (int slot = 0; slot < kGamepadSlots; ++slot) OpenGamepad(slot);
  router.BeginFrame();
  const auto events = std::exchange(events_, {});
  for (const SDL_Event& event : events) router.Route(event);
  router.EndFrame();
}

int ScriptedPlatform::GetJoystickCount() const {
  const auto pads = std::count_if(pads_.begin(), pads_.end(), [](const Pad& pad) { return pad.present; });
  return static_cast<int>(pads) + otherDevices_;
}

void ScriptedPlatform::OpenGamepad(int slot) { PadAt(slot).open = PadAt(slot).present; }

bool ScriptedPlatform::GetGamepadButton(int slot, int button) const {
  return PadAt(slot).open && PadAt(slot).buttons[static_cast<std::size_t>(button)];
}

std::int16_t ScriptedPlatform::GetGamepadAxis(int slot, int axis) const {
  return PadAt(slot).open ? PadAt(slot).axes[static_cast<std::size_t>(axis)] : std::int16_t{0};
}
