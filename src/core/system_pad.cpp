#include "core/system_pad.h"

#include <algorithm>
#include <utility>

namespace {

// Button numbers of the game in SDL's terms: d-pad, Start, Back, sticks, shoulders, letters, Guide.
constexpr std::array<SDL_GameControllerButton, 15> kButtons = {SDL_CONTROLLER_BUTTON_DPAD_UP,
                                                               SDL_CONTROLLER_BUTTON_DPAD_DOWN,
                                                               SDL_CONTROLLER_BUTTON_DPAD_LEFT,
                                                               SDL_CONTROLLER_BUTTON_DPAD_RIGHT,
                                                               SDL_CONTROLLER_BUTTON_START,
                                                               SDL_CONTROLLER_BUTTON_BACK,
                                                               SDL_CONTROLLER_BUTTON_LEFTSTICK,
                                                               SDL_CONTROLLER_BUTTON_RIGHTSTICK,
                                                               SDL_CONTROLLER_BUTTON_LEFTSHOULDER,
                                                               SDL_CONTROLLER_BUTTON_RIGHTSHOULDER,
                                                               SDL_CONTROLLER_BUTTON_A,
                                                               SDL_CONTROLLER_BUTTON_B,
                                                               SDL_CONTROLLER_BUTTON_X,
                                                               SDL_CONTROLLER_BUTTON_Y,
                                                               SDL_CONTROLLER_BUTTON_GUIDE};

constexpr std::array<SDL_GameControllerAxis, kGamepadAxes> kAxes = {
    SDL_CONTROLLER_AXIS_LEFTX,  SDL_CONTROLLER_AXIS_LEFTY,       SDL_CONTROLLER_AXIS_RIGHTX,
    SDL_CONTROLLER_AXIS_RIGHTY, SDL_CONTROLLER_AXIS_TRIGGERLEFT, SDL_CONTROLLER_AXIS_TRIGGERRIGHT};
constexpr int kFirstTrigger = 4;

// SDL's triggers go from 0; the game's rest at the lowest value, as a raw device's do.
std::int16_t TriggerValue(std::int16_t value) {
  return static_cast<std::int16_t>(std::clamp(2 * value - 32768, -32768, 32767));
}

}  // namespace

System::Pad::Pad(int device) : id(SDL_JoystickGetDeviceInstanceID(device)) {
  if (SDL_IsGameController(device) == SDL_TRUE) controller.reset(SDL_GameControllerOpen(device));
  if (controller == nullptr) joystick.reset(SDL_JoystickOpen(device));
}

int System::GetJoystickCount() const { return std::max(0, SDL_NumJoysticks()); }

// A device that is closed loses what is held on it until its next report, so one that stays or moves to another slot is
// never closed in between: the new handle of a slot is made before its old one goes.
void System::OpenGamepad(int slot) {
  auto& pad = pads_[static_cast<std::size_t>(slot)];
  const bool isThere = slot < GetJoystickCount();
  if (isThere && pad && pad->id == SDL_JoystickGetDeviceInstanceID(slot)) return;
  auto opened = isThere ? std::make_unique<Pad>(slot) : nullptr;
  pad = opened && opened->IsOpen() ? std::move(opened) : nullptr;
}

bool System::IsGamepadConnected(int slot) const { return pads_[static_cast<std::size_t>(slot)] != nullptr; }

bool System::GetGamepadButton(int slot, int button) const {
  const auto& pad = pads_[static_cast<std::size_t>(slot)];
  if (!pad) return false;
  if (pad->joystick) return SDL_JoystickGetButton(pad->joystick.get(), button) != 0;
  const auto index = static_cast<std::size_t>(button);
  return index < kButtons.size() && SDL_GameControllerGetButton(pad->controller.get(), kButtons[index]) != 0;
}

std::int16_t System::GetGamepadAxis(int slot, int axis) const {
  const auto& pad = pads_[static_cast<std::size_t>(slot)];
  if (!pad) return 0;
  if (pad->joystick) return SDL_JoystickGetAxis(pad->joystick.get(), axis);
  const std::int16_t value = SDL_GameControllerGetAxis(pad->controller.get(), kAxes[static_cast<std::size_t>(axis)]);
  return axis < kFirstTrigger ? value : TriggerValue(value);
}
