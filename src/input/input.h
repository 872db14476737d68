// Keyboard, mouse and bindings as scripts ask for them: the state now, and as it was at the start of the frame. The
// event router feeds it. Main thread only.
#pragma once

#include <SDL.h>

#include <bitset>
#include <functional>
#include <string_view>

#include "core/platform.h"

namespace Input {

// --- keyboard ---

/// Keeps the keys of this moment as the previous ones; first in every event pump.
void BeginFrame();
/// A key by SDL key code went down or up. A key without a name or letter is ignored.
void SetKey(int keyCode, bool down);
/// Held now; names are "shift", "esc", "arrowkeyup" and so on, false for any other.
bool IsKeyDown(std::string_view name);
/// Held now and not at the start of the frame.
bool IsKeyTriggered(std::string_view name);
/// The same for 'a' to 'z', lower case whatever Shift does.
bool IsLetterDown(char letter);
bool IsLetterTriggered(char letter);
/// The SDL key code of a named key or of a one-letter name; SDLK_UNKNOWN for any other.
int KeyCodeFromName(std::string_view name);
/// The name of a key by its SDL key code, a letter's too; empty for any other.
std::string_view NameOfKey(int keyCode);

// --- bindings ---

/// Runs `callback` at every key-down event of the key, repeats included, after the callbacks bound before.
void BindKeyDown(int keyCode, std::function<void()> callback);
void RunKeyDownBindings(int keyCode);
void RunKeyUpBindings(int keyCode);

// --- mouse ---

enum class MouseButton { kLeft, kRight, kMiddle };

/// Click tracker for menus: takes every event, looks at mouse buttons only.
void TrackMouseEvent(const SDL_Event& event);
/// After the queue is empty.
void EndMouseFrame();
/// True in the frame in which the button went down.
bool IsLeftClicked();
bool IsRightClicked();

/// Cursor buttons, apart from the click tracker: they and the pixel position count only once a MouseComponent exists.
void EnableMouse();
void SetMouseButton(MouseButton button, bool down, float pixelX, float pixelY);
void SetMousePixel(float pixelX, float pixelY);
/// Keeps the buttons of this moment as the previous ones.
void BeginMouseFrame();
bool IsMouseButtonDown(MouseButton button);
bool IsMouseButtonTriggered(MouseButton button);

/// Where the window is and where the mouse is in it, in pixels; and the mouse's place in the world at depth 0.
struct Pointer {
  WindowRect window;
  int mouseX = 0;
  int mouseY = 0;
  float worldX = 0.0f;
  float worldY = 0.0f;
  bool onBars = false;  ///< the editor's bars are shown, and the mouse is theirs
};
Pointer& GetPointer();

/// What is held down and was in the frame before, to be kept and put back. `click...`: of the tracker for menus.
inline constexpr std::size_t kNamedKeyCount = 14;
struct Held {
  struct Keys {
    std::bitset<26> letters;
    std::bitset<kNamedKeyCount> named;

    bool operator==(const Keys&) const = default;
  };
  Keys keys;
  Keys previousKeys;
  std::bitset<3> mouseButtons;
  std::bitset<3> previousMouseButtons;
  std::bitset<3> clickDown;
  std::bitset<3> clickPrevious;
  bool clickChanged = false;

  bool operator==(const Held&) const = default;
};
Held& GetHeld();

/// Forgets keys, clicks, bindings and the pointer, as at the start of the process.
void Reset();

}  // namespace Input
