// A run that stands on what it is given, in a real window: the window shows, and everything else is the script's.
#pragma once

#include "core/scripted_platform.h"

class WindowPlatform : public Platform {
 public:
  /// Both must outlive it.
  WindowPlatform(Platform& window, ScriptedPlatform& given) : window_(window), given_(given) {}

  WindowRect GetWindowRect() const override { return given_.GetWindowRect(); }
  bool IsFullscreen() const override { return window_.IsFullscreen(); }
  void ShowPointer(bool shown) override { window_.ShowPointer(shown); }
  std::string GetClipboard() override { return given_.GetClipboard(); }
  void SetClipboard(const std::string& text) override { given_.SetClipboard(text); }
  void Present() override { window_.Present(); }
  int GetJoystickCount() const override { return given_.GetJoystickCount(); }
  void OpenGamepad(int slot) override { given_.OpenGamepad(slot); }
  bool IsGamepadConnected(int slot) const override { return given_.IsGamepadConnected(slot); }
  bool GetGamepadButton(int slot, int button) const override { return given_.GetGamepadButton(slot, button); }
  std::int16_t GetGamepadAxis(int slot, int axis) const override { return given_.GetGamepadAxis(slot, axis); }
  void StartFrame() override { window_.StartFrame(); }
  void EndFrame() override { window_.EndFrame(); }

 protected:
  Platform& window_;
  ScriptedPlatform& given_;
};
