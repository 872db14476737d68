// One opened device of the real platform, in the layout that the game reads.
#pragma once

#include "core/system.h"

struct System::Pad {
  /// Opens the device, or finds it open already.
  explicit Pad(int device);
  bool IsOpen() const { return controller != nullptr || joystick != nullptr; }

  SDL_JoystickID id;  // of the device, for as long as it is plugged in

  struct Closer {
    void operator()(SDL_GameController* handle) const { SDL_GameControllerClose(handle); }
    void operator()(SDL_Joystick* handle) const { SDL_JoystickClose(handle); }
  };
  std::unique_ptr<SDL_GameController, Closer> controller;  // a device that SDL's mapping knows
  std::unique_ptr<SDL_Joystick, Closer> joystick;          // any other, in its raw numbers
};
