// One frame of the game, its order written out once; the game, the tool and the tests all run this.
#pragma once

#include "core/platform.h"

class Frame {
 public:
  /// The platform's events go to `router`; not owned.
  explicit Frame(EventRouter& router) : router_(router) {}

  /// With all frames before it that the editor wants to have run again.
  void Run();

 private:
  void RunOnce();
  void RunRunning();
  void RunPaused();
  void UpdateCursorAndCamera();
  void DrawScene();

  EventRouter& router_;
};
