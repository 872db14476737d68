// The real platform: SDL, one desktop-full-screen OpenGL window, its event queue and the gamepads behind SDL's mapping.
// Every failure is a line on the print target and the program goes on. Main thread only.
#pragma once

#include <array>
#include <memory>

#include "core/gl_window.h"
#include "core/platform.h"

class SystemPad;

class System final : public Platform {
 public:
  System();
  ~System() override;

  /// Starts SDL, opens the window and the GL context and says which one, turns vertical sync on, hides the mouse
  /// pointer and seeds the random stream with 10. The gamepads are opened by the input floor.
  void Init(GlLoader loadGl);
  /// Deletes the context and leaves SDL.
  void Shutdown();

  /// Flips vertical sync and returns what it is now; turning it off only forgets it.
  bool ToggleVSync();
  /// The window's present size in pixels; the last known one without a window.
  int GetWindowWidth() const { return GetWindowRect().width; }
  int GetWindowHeight() const { return GetWindowRect().height; }

  void PumpEvents(EventRouter& router) override;
  WindowRect GetWindowRect() const override;
  bool IsFullscreen() const override { return fullscreen_; }
  void SetFullscreen(bool fullscreen) override;
  void Minimise() override;
  void ShowPointer(bool shown) override;
  std::string GetClipboard() override;
  void SetClipboard(const std::string& text) override;
  void Present() override;
  int GetJoystickCount() const override;
  void OpenGamepad(int slot) override;
  bool IsGamepadConnected(int slot) const override;
  bool GetGamepadButton(int slot, int button) const override;
  std::int16_t GetGamepadAxis(int slot, int axis) const override;
  void StartFrame() override;
  void EndFrame() override;

  bool startsFullscreen = true;  ///< read by Init; else the window has the size that its surroundings give it
  unsigned targetFps = 0;        ///< frames a second that EndFrame sleeps down to; 0: no cap
  unsigned measuredFps = 0;      ///< of the last frame that took a measurable time

 private:
  void PrintDisplayMode() const;
  void OpenWindow(GlLoader loadGl);

  GlWindow window_;
  bool fullscreen_ = true;
  bool vsync_ = false;
  std::uint32_t frameStartTicks_ = 0;  // milliseconds
  std::uint32_t frameEndTicks_ = 0;
  std::uint32_t frameTime_ = 0;
  std::array<std::unique_ptr<SystemPad>, kGamepadSlots> pads_;
};

/// Milliseconds to sleep after a frame that took `frameTime` milliseconds; 0 when it is late or `targetFps` is 0.
std::uint32_t FrameRest(std::uint32_t frameTime, unsigned targetFps);
