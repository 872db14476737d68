// Handles on the one selected object that the mouse can pull at: size of the picture, turn, collider, broad-phase
// circle, and velocity as an arrow. They take the press before anything is picked by it.
#pragma once

#include <optional>
#include <vector>

#include "editor/acts/form.h"
#include "editor/stage/grid.h"
#include "editor/stage/outlines.h"

class History;

class Handles {
 public:
  /// Takes a press of the left button at that pixel if a handle is there.
  bool Press(const StageView& view, float x, float y);
  bool IsPulling() const { return pulled_.has_value(); }
  /// Once a frame, after the events: pulls on, or ends the act when the button, of which `Release` tells, came up.
  void Update(History& history, const Grid& grid);
  void Release() { released_ = true; }
  void Stop(History& history);
  /// The lines of the handles, or none unless exactly one object is selected.
  void Draw(const StageView& view, std::vector<StageLine>& lines) const;

 private:
  enum class Kind { kSize, kTurn, kCollider, kBroadPhase, kVelocity };
  struct Handle {
    Kind kind;
    Vec3 place;
  };
  struct Pulled {
    std::uint32_t id;
    Kind kind;
    Form before;
    Vec3 grip;  // from the mouse to the handle's place
  };

  static std::vector<Handle> HandlesOf(const GameObject& object);
  static Form Shaped(const GameObject& object, const Form& now, Kind kind, const Vec3& place, const Grid& grid);
  static void Take(Form& to, const Form& from, Kind kind);
  void End(History& history);

  std::optional<Pulled> pulled_;
  bool released_ = false;
};
