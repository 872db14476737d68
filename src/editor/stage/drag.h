// Moving what is selected with the mouse, as long as the button that picked one of it is held. The picked one snaps to
// the grid, the others keep their place beside it.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "editor/acts/form.h"
#include "editor/stage/grid.h"

class History;

class Drag {
 public:
  /// Once a frame, after the events: begins with a pick, moves the objects, and records the whole way as one act.
  void Update(History& history, const Grid& grid);
  /// Lets go; where the objects are now they stay. Picks up to now begin nothing.
  void Stop(History& history);
  /// Whether the mouse holds an object.
  bool IsHolding() const { return objectId_ != 0; }
  /// And moves it.
  bool IsMoving() const { return objectId_ != 0 && moved_; }

 private:
  void Begin();
  void End(History& history);
  void Move(const Grid& grid);
  void TakeAll();

  std::uint32_t objectId_ = 0;  // 0: nothing is dragged
  unsigned picks_ = 0;
  std::vector<std::uint32_t> selection_;  // of the last frame: a pick of one of several moves them all
  std::vector<std::pair<std::uint32_t, Form>> before_;
  Vec3 grip_;   // from the mouse to the object's place
  Vec3 start_;  // of the mouse
  bool moved_ = false;
};
