#include "core/system_pad.h"

#include <algorithm>
#include <array>

#include "core/platform.h"

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

SystemPad::SystemPad(int device) : id_(SDL_JoystickGetDeviceInstanceID(device)) {
  if (SDL_IsGameController(device) == SDL_TRUE) controller_.reset(SDL_GameControllerOpen(device));
  if (controller_ == nullptr) joystick_.reset(SDL_JoystickOpen(device));
}

bool SystemPad::GetButton(int button) const {
  if (joystick_) return SDL_JoystickGetButton(joystick_.get(), button) != 0;
  const auto index = static_cast<std::size_t>(button);
  return index < kButtons.size() && SDL_GameControllerGetButton(controller_.get(), kButtons[index]) != 0;
}

std::int16_t SystemPad::GetAxis(int axis) const {
  if (joystick_) return SDL_JoystickGetAxis(joystick_.get(), axis);
  const std::int16_t value = SDL_GameControllerGetAxis(controller_.get(), kAxes[static_cast<std::size_t>(axis)]);
  return axis < kFirstTrigger ? value : TriggerValue(value);
}
