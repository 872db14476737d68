// What the program stands on: a window with its events and gamepads, or a stand-in for it that a script drives. The
// floors above ask through this class and cannot tell which.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <string>

/// Gamepad slots, buttons and axes that the game knows.
inline constexpr int kGamepadSlots = 4;
inline constexpr int kGamepadButtons = 16;
inline constexpr int kGamepadAxes = 6;

/// A window's place and size in pixels.
struct WindowRect {
  int x = 0;
  int y = 0;
  int width = 1280;
  int height = 720;
};

/// Takes the events of one frame; implemented above, since events reach every floor.
class EventRouter {
 public:
  virtual ~EventRouter() = default;
  /// Before the queue is drained: input starts its frame and reads the gamepads.
  virtual void BeginFrame() = 0;
  virtual void Route(const SDL_Event& event) = 0;
  /// After the queue is empty.
  virtual void EndFrame() = 0;
};

/// By itself it is nothing to stand on: a window that is never seen, no events and no devices.
class Platform {
 public:
  virtual ~Platform() = default;

  /// Hands every waiting event to the router.
  virtual void PumpEvents(EventRouter& router) {
    router.BeginFrame();
    router.EndFrame();
  }
  virtual WindowRect GetWindowRect() const { return {}; }
  virtual bool IsFullscreen() const { return false; }
  virtual void SetFullscreen(bool /*fullscreen*/) {}
  virtual void Minimise() {}
  /// Shows or hides the system's own mouse pointer over the window.
  virtual void ShowPointer(bool /*shown*/) {}
  /// The text that programs of the desktop pass each other; here it stays in the program.
  virtual std::string GetClipboard() { return clipboard_; }
  virtual void SetClipboard(const std::string& text) { clipboard_ = text; }
  /// Shows the finished frame.
  virtual void Present() {}

  /// Devices present, slots or not.
  virtual int GetJoystickCount() const { return 0; }
  /// Opens device `slot` into that slot anew, or leaves it empty when there is none. Slots 0 to 3.
  virtual void OpenGamepad(int /*slot*/) {}
  virtual bool IsGamepadConnected(int /*slot*/) const { return false; }
  /// In the layout of Gamepad; 0 for an empty slot.
  virtual bool GetGamepadButton(int /*slot*/, int /*button*/) const { return false; }
  virtual std::int16_t GetGamepadAxis(int /*slot*/, int /*axis*/) const { return 0; }

  /// Marks the start of a frame for EndFrame.
  virtual void StartFrame() {}
  /// Sleeps away what is left of the frame.
  virtual void EndFrame() {}

  bool running = true;  ///< the main loop goes on while true

 private:
  std::string clipboard_;
};

/// The platform in use; there is one before anything else runs.
Platform& GetPlatform();
/// Replaces it; not owned.
void SetPlatform(Platform& platform);
