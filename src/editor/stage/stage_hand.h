// What the mouse does in the picture while the bars are shown: it pulls at handles, drags what it has picked, and
// frames what is to be selected; and what is drawn there for it.
#pragma once

#include <vector>

#include "editor/stage/drag.h"
#include "editor/stage/frame_select.h"
#include "editor/stage/grid.h"
#include "editor/stage/handles.h"

class StageHand {
 public:
  Grid grid;

  /// The left button went down or came up there, in window pixels. True when a handle takes it.
  bool Press(const StageView& view, float x, float y) { return handles_.Press(view, x, y); }
  bool Release();
  /// Once a frame, after the events.
  void Update(History& history);
  /// Whether the mouse is changing an object.
  bool IsChanging() const { return handles_.IsPulling() || drag_.IsMoving(); }
  /// Lets go of everything.
  void Stop(History& history);
  /// A ring around an object for a while, from far around it to close.
  void Ring(std::uint32_t objectId);
  /// Everything over the picture. `marked`: objects that get a mark at the picture's edge when they lie outside it.
  std::vector<StageLine> Draw(const StageView& view, const std::vector<std::uint32_t>& marked) const;

 private:
  Handles handles_;
  Drag drag_;
  FrameSelect frame_;
  std::uint32_t ringed_ = 0;
  int ringFrames_ = 0;  // left
};
