// Where each window event goes: input, the window's own state, or the end of the program.
#pragma once

#include "core/platform.h"

class GameEvents final : public EventRouter {
 public:
  /// Without bars the editor takes its keys only: in a run whose input is what the bars have left over.
  explicit GameEvents(bool withBars = true) : withBars_(withBars) {}

  void BeginFrame() override;
  void Route(const SDL_Event& event) override;
  void EndFrame() override;

 private:
  void RouteWindowEvent(const SDL_WindowEvent& event);
  void RouteKey(const SDL_KeyboardEvent& event);
  void RouteMouseMotion(const SDL_MouseMotionEvent& event);
  void RouteMouseButton(const SDL_MouseButtonEvent& event);

  const bool withBars_;
};
