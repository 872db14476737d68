#include "core/scripted_platform.h"

#include <algorithm>
#include <utility>

void ScriptedPlatform::ConnectPad(int slot, bool connected) {
  Pad pad;
  pad.present = connected;
  if (connected) pad.axes[4] = pad.axes[5] = kTriggerRest;
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
  return static_cast<int>(std::count_if(pads_.begin(), pads_.end(), [](const Pad& pad) { return pad.present; }));
}

void ScriptedPlatform::OpenGamepad(int slot) { PadAt(slot).open = PadAt(slot).present; }

bool ScriptedPlatform::GetGamepadButton(int slot, int button) const {
  return PadAt(slot).open && PadAt(slot).buttons[static_cast<std::size_t>(button)];
}

std::int16_t ScriptedPlatform::GetGamepadAxis(int slot, int axis) const {
  return PadAt(slot).open ? PadAt(slot).axes[static_cast<std::size_t>(axis)] : std::int16_t{0};
}
