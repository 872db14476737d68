#include "input/input.h"

#include <array>
#include <bitset>
#include <utility>
#include <vector>

namespace Input {

namespace {

constexpr std::array<std::pair<std::string_view, int>, kNamedKeyCount> kNamedKeys = {{
    {"shift", SDLK_LSHIFT},
    {"rshift", SDLK_RSHIFT},
    {"alt", SDLK_LALT},
    {"ralt", SDLK_RALT},
    {"ctrl", SDLK_LCTRL},
    {"rctrl", SDLK_RCTRL},
    {"tab", SDLK_TAB},
    {"enter", SDLK_RETURN},
    {"space", SDLK_SPACE},
    {"esc", SDLK_ESCAPE},
    {"arrowkeydown", SDLK_DOWN},
    {"arrowkeyup", SDLK_UP},
    {"arrowkeyright", SDLK_RIGHT},
    {"arrowkeyleft", SDLK_LEFT},
}};

struct KeyBinding {
  int key;
  std::vector<std::function<void()>> callbacks;
};

struct State {
  Held held;
  std::vector<KeyBinding> keyDownBindings;
  std::vector<KeyBinding> keyUpBindings;
  Pointer pointer;
  bool mouseEnabled = false;
  float mousePixelX = 0.0f;  // where the cursor's last event was, in window pixels; kept and asked for by nobody:
  float mousePixelY = 0.0f;  // the mouse's place is the Pointer's
};

State& Get() {
  static State state;
  return state;
}

std::size_t IndexOf(std::string_view name) {
  std::size_t i = 0;
  while (i < kNamedKeys.size() && kNamedKeys[i].first != name) ++i;
  return i;
}

bool IsNamed(const Held::Keys& keys, std::string_view name) {
  const std::size_t i = IndexOf(name);
  return i < kNamedKeys.size() && keys.named[i];
}

bool IsLetter(const Held::Keys& keys, char letter) {
  return letter >= 'a' && letter <= 'z' && keys.letters[static_cast<std::size_t>(letter - 'a')];
}

void Run(const std::vector<KeyBinding>& bindings, int keyCode) {
  for (const KeyBinding& binding : bindings) {
    if (binding.key != keyCode) continue;
    const auto callbacks = binding.callbacks;  // a callback may bind further keys
    for (const auto& callback : callbacks) callback();
    return;
  }
}

bool IsClicked(MouseButton button) {
  const auto bit = static_cast<std::size_t>(button);
  return Get().held.clickDown[bit] && !Get().held.clickPrevious[bit];
}

}  // namespace

void BeginFrame() { Get().held.previousKeys = Get().held.keys; }

void SetKey(int keyCode, bool down) {
  Held::Keys& keys = Get().held.keys;
  if (keyCode >= 'a' && keyCode <= 'z') keys.letters[static_cast<std::size_t>(keyCode - 'a')] = down;
  for (std::size_t i = 0; i < kNamedKeys.size(); ++i)
    if (kNamedKeys[i].second == keyCode) keys.named[i] = down;
}

bool IsKeyDown(std::string_view name) { return IsNamed(Get().held.keys, name); }
bool IsKeyTriggered(std::string_view name) { return IsKeyDown(name) && !IsNamed(Get().held.previousKeys, name); }
bool IsLetterDown(char letter) { return IsLetter(Get().held.keys, letter); }
bool IsLetterTriggered(char letter) { return IsLetterDown(letter) && !IsLetter(Get().held.previousKeys, letter); }

int KeyCodeFromName(std::string_view name) {
  if (name.size() == 1 && name[0] >= 'a' && name[0] <= 'z') return name[0];
  const std::size_t i = IndexOf(name);
  return i < kNamedKeys.size() ? kNamedKeys[i].second : static_cast<int>(SDLK_UNKNOWN);
}

std::string_view NameOfKey(int keyCode) {
  static constexpr std::string_view kAlphabet = "abcdefghijklmnopqrstuvwxyz";
  if (keyCode >= 'a' && keyCode <= 'z') return kAlphabet.substr(static_cast<std::size_t>(keyCode - 'a'), 1);
  for (const auto& [name, code] : kNamedKeys)
    if (code == keyCode) return name;
  return {};
}

void BindKeyDown(int keyCode, std::function<void()> callback) {
  auto& bindings = Get().keyDownBindings;
  for (KeyBinding& binding : bindings) {
    if (binding.key != keyCode) continue;
    binding.callbacks.push_back(std::move(callback));
    return;
  }
  bindings.push_back({keyCode, {std::move(callback)}});
}

void RunKeyDownBindings(int keyCode) { Run(Get().keyDownBindings, keyCode); }
void RunKeyUpBindings(int keyCode) { Run(Get().keyUpBindings, keyCode); }

void TrackMouseEvent(const SDL_Event& event) {
  if (event.type != SDL_MOUSEBUTTONDOWN && event.type != SDL_MOUSEBUTTONUP) return;
  Held& state = Get().held;
  std::size_t bit = 0;
  switch (event.button.button) {
    case SDL_BUTTON_LEFT:
      bit = static_cast<std::size_t>(MouseButton::kLeft);
      break;
    case SDL_BUTTON_RIGHT:
      bit = static_cast<std::size_t>(MouseButton::kRight);
      break;
    case SDL_BUTTON_MIDDLE:
      bit = static_cast<std::size_t>(MouseButton::kMiddle);
      break;
    default:
      return;
  }
  state.clickPrevious[bit] = state.clickDown[bit];
  state.clickDown[bit] = event.type == SDL_MOUSEBUTTONDOWN;
  state.clickChanged = true;
}

void EndMouseFrame() {
  Held& state = Get().held;
  if (!state.clickChanged) state.clickPrevious = state.clickDown;
  state.clickChanged = false;
}

bool IsLeftClicked() { return IsClicked(MouseButton::kLeft); }
bool IsRightClicked() { return IsClicked(MouseButton::kRight); }

void EnableMouse() { Get().mouseEnabled = true; }

void SetMouseButton(MouseButton button, bool down, float pixelX, float pixelY) {
  if (!Get().mouseEnabled) return;
  SetMousePixel(pixelX, pixelY);
  Get().held.mouseButtons[static_cast<std::size_t>(button)] = down;
}

void SetMousePixel(float pixelX, float pixelY) {
  if (!Get().mouseEnabled) return;
  Get().mousePixelX = pixelX;
  Get().mousePixelY = pixelY;
}

void BeginMouseFrame() { Get().held.previousMouseButtons = Get().held.mouseButtons; }

bool IsMouseButtonDown(MouseButton button) { return Get().held.mouseButtons[static_cast<std::size_t>(button)]; }

bool IsMouseButtonTriggered(MouseButton button) {
  const auto bit = static_cast<std::size_t>(button);
  return Get().held.mouseButtons[bit] && !Get().held.previousMouseButtons[bit];
}

Pointer& GetPointer() { return Get().pointer; }

Held& GetHeld() { return Get().held; }

void Reset() { Get() = State{}; }

}  // namespace Input
