// Where each window event goes: input, the window's own state, or the end of the program.
#pragma once

#include "core/platform.h"

class GameEvents final : public EventRouter {
 public:
  void BeginFrame() override;
  void Route(const SDL_Event& event) override;
  void EndFrame() override;

 private:
  void RouteWindowEvent(const SDL_WindowEvent& event);
  void RouteKey(const SDL_KeyboardEvent& event);
  void RouteMouseMotion(const SDL_MouseMotionEvent& event);
  void RouteMouseButton(const SDL_MouseButtonEvent& event);
};
