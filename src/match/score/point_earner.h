// Who can be given points: a player's controller, which stands a room above. Points travel as bubbles (see
// point_bubble.h) to the player's display, an object with a ScoreScript, which counts what arrives.
#pragma once

#include "physics/math/vec3.h"

class GameObject;

class PointEarner {
 public:
  /// Awards points as bubbles that fly to the player's display: from `origin`, or from the player when it is the zero
  /// vector. Nothing for less than 1 point or without a display.
  virtual void AddPoints(int points, const Vec3& origin) = 0;

 protected:
  ~PointEarner() = default;
};

/// The object's, or null when it is no player.
PointEarner* FindPointEarner(const GameObject& object);
/// Awards points to the player of that index: at `origin`, or at the player when it is zero. Nothing without a player
/// who can score.
void AwardPoints(int player, int points, const Vec3& origin = {});
