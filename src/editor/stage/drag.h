// Moving the picked object with the mouse, as long as the button that picked it is held. Ctrl snaps it to a grid.
#pragma once

#include <cstdint>

#include "physics/math/vec3.h"

class GameObject;
class History;

class Drag {
 public:
  static constexpr float kGrid = 0.5f;  ///< world units

  /// Once a frame, after the events: begins with a pick, moves the object, and records the whole way as one step.
  void Update(History& history);
  /// Lets go; where the object is now it stays. Picks up to now begin nothing.
  void Stop(History& history);

 private:
  void Begin();
  void End(History& history);
  void Move(GameObject& object);

  std::uint32_t objectId_ = 0;  // 0: nothing is dragged
  unsigned picks_ = 0;
  Vec3 before_;
  Vec3 grip_;   // from the mouse to the object's place
  Vec3 start_;  // of the mouse
  bool moved_ = false;
};
