#include "game_events.h"

#include "core/pause.h"
#include "core/print.h"
#include "editor/editor.h"
#include "graphics/renderer.h"
#include "input/gamepad.h"
#include "input/input.h"

void GameEvents::BeginFrame() {
  Input::BeginFrame();
  for (int slot = 0; slot < kGamepadSlots; ++slot) {
    Input::GetGamepad(slot).UpdateButtons();
    Input::GetGamepad(slot).UpdateAxes();
  }
  Input::BeginMouseFrame();
}

void GameEvents::Route(const SDL_Event& event) {
  Editor& editor = GetEditor();
  if (withBars_ ? editor.HandleEvent(event) : editor.HandleShortcut(event)) return;
  Input::TrackMouseEvent(event);
  switch (event.type) {
    case SDL_QUIT:
      GetPlatform().running = false;
      break;
    case SDL_WINDOWEVENT:
      RouteWindowEvent(event.window);
      break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
      RouteKey(event.key);
      break;
    case SDL_MOUSEMOTION:
      RouteMouseMotion(event.motion);
      break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
      RouteMouseButton(event.button);
      break;
    // A pad without mapping sends only the joystick events.
    case SDL_CONTROLLERDEVICEADDED:
    case SDL_CONTROLLERDEVICEREMOVED:
    case SDL_JOYDEVICEADDED:
    case SDL_JOYDEVICEREMOVED:
      Input::ReopenGamepads();
      break;
    default:
      break;
  }
}

void GameEvents::EndFrame() {
  GetEditor().Update();
  Input::EndMouseFrame();
}

void GameEvents::RouteWindowEvent(const SDL_WindowEvent& event) {
  switch (event.event) {
    case SDL_WINDOWEVENT_SIZE_CHANGED:
      if (event.data1 <= 0 || event.data2 <= 0) return;
      Input::GetPointer().window = GetPlatform().GetWindowRect();
      GetRenderer().FitWindow();
      break;
    case SDL_WINDOWEVENT_FOCUS_GAINED:
      Print("Focus GAINED\n");
      ReleasePause(kFocusLostReason);
      break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
      if (GetPlatform().IsFullscreen()) GetPlatform().Minimise();
      Print("Focus Lost\n");
      RequestPause(kFocusLostReason);
      break;
    default:
      break;
  }
}

// Bindings run on every key-down event, repeats of a held key included.
void GameEvents::RouteKey(const SDL_KeyboardEvent& event) {
  const bool down = event.type == SDL_KEYDOWN;
  const int key = event.keysym.sym;
  down ? Input::RunKeyDownBindings(key) : Input::RunKeyUpBindings(key);
  Input::SetKey(key, down);
}

void GameEvents::RouteMouseMotion(const SDL_MouseMotionEvent& event) {
  Input::Pointer& pointer = Input::GetPointer();
  pointer.window = GetPlatform().GetWindowRect();
  pointer.mouseX = event.x;
  pointer.mouseY = event.y;
  Input::SetMousePixel(static_cast<float>(event.x), static_cast<float>(event.y));
}

void GameEvents::RouteMouseButton(const SDL_MouseButtonEvent& event) {
  const bool down = event.type == SDL_MOUSEBUTTONDOWN;
  const auto set = [&](Input::MouseButton button) {
    Input::SetMouseButton(button, down, static_cast<float>(event.x), static_cast<float>(event.y));
  };
  switch (event.button) {
    case SDL_BUTTON_LEFT:
      set(Input::MouseButton::kLeft);
      break;
    case SDL_BUTTON_RIGHT:
      set(Input::MouseButton::kRight);
      break;
    case SDL_BUTTON_MIDDLE:
      set(Input::MouseButton::kMiddle);
      break;
    default:
      break;
  }
}
