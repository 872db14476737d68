#include "editor/trial/tape_platform.h"

void TapePlatform::PumpEvents(EventRouter& router) {
  router.BeginFrame();
  for (const SDL_Event& event : frame_->events) router.Route(event);
  router.EndFrame();
}
