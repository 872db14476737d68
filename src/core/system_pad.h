// One opened device of the real platform, in the layout that the game reads.
#pragma once

#include "core/system.h"

struct System::Pad {
  explicit Pad(int device);
  bool IsOpen() const { return controller != nullptr || joystick != nullptr; }

  struct Closer {
    void operator()(SDL_GameController* handle) const { SDL_GameControllerClose(handle); }
    void operator()(SDL_Joystick* handle) const { SDL_JoystickClose(handle); }
  };
  std::unique_ptr<SDL_GameController, Closer> controller;  // a device that SDL's mapping knows
  std::unique_ptr<SDL_Joystick, Closer> joystick;          // any other, in its raw numbers
};
