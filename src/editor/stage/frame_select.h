// Dragging a frame from an empty place: what lies wholly inside it when the button comes up is selected. Core objects
// are left out, for they are no part of a level.
#pragma once

#include <optional>

#include "editor/acts/object_shape.h"

class FrameSelect {
 public:
  /// Once a frame, after the events; `busy`: the mouse has something else in hand.
  void Update(bool busy);
  void Stop() { *this = {}; }
  /// The frame in the world, while there is one.
  std::optional<Bounds> GetFrame() const;

 private:
  void Select() const;

  bool pressed_ = false;  // in the frame before; whether an object was there is known now
  bool framing_ = false;
  unsigned picks_ = 0;
  Vec3 start_;
};
