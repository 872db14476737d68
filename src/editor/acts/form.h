// Where an object is, how it is turned and moves, and how large it is: what is changed by hand in the picture.
#pragma once

#include "core/game_object.h"
#include "physics/math/quaternion.h"
#include "physics/math/vec3.h"

struct Form {
  Vec3 position;
  Quaternion orientation;
  Vec3 graphicsScale;
  Vec3 velocity;        ///< 0 without a body, as are the next three without their collider
  Vec3 halfExtents;     ///< of a box
  float radius = 0.0f;  ///< of a sphere
  float broadPhaseSize = 0.0f;

  bool operator==(const Form&) const = default;
};

Form TakeForm(const GameObject& object);

/// Gives the object those values of `to` that differ in `from`; the others stay as they are.
void ChangeForm(GameObject& object, const Form& from, const Form& to);
