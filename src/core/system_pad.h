// One opened device of the real platform, in the layout that the game reads. Main thread only.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <memory>

class SystemPad {
 public:
  /// Opens the device, or finds it open already.
  explicit SystemPad(int device);
  bool IsOpen() const { return controller_ != nullptr || joystick_ != nullptr; }
  /// Whether it is that device, for as long as it is plugged in.
  bool IsDevice(int device) const { return id_ == SDL_JoystickGetDeviceInstanceID(device); }

  /// By the game's numbers; those that the device lacks are up, and at rest.
  bool GetButton(int button) const;
  std::int16_t GetAxis(int axis) const;

 private:
  struct Closer {
    void operator()(SDL_GameController* handle) const { SDL_GameControllerClose(handle); }
    void operator()(SDL_Joystick* handle) const { SDL_JoystickClose(handle); }
  };

  SDL_JoystickID id_;
  std::unique_ptr<SDL_GameController, Closer> controller_;  // a device that SDL's mapping knows
  std::unique_ptr<SDL_Joystick, Closer> joystick_;          // any other, in its raw numbers
};
