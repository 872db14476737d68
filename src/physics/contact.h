// What the exact tests find: where two solid colliders touch, and how deep.
#pragma once

#include <limits>

#include "physics/math/vec3.h"

class GameObject;

namespace GalePhysics {

class RigidBody;

struct Contact {
  /// A contact without a point of touch: no angular response.
  static constexpr Vec3 kNoPoint = {std::numeric_limits<float>::max(), std::numeric_limits<float>::max(),
                                    std::numeric_limits<float>::max()};

  float restitution = 0.0f;          ///< mean of both colliders
  float timeStep = 0.0f;             ///< seconds of the sub-step that found it
  float penetration = 0.0f;          ///< depth along the normal, positive when overlapping
  Vec3 normal;                       ///< unit length or zero, from the second body toward the first
  Vec3 point = kNoPoint;             ///< world position
  RigidBody* first = nullptr;        ///< null: an owner without a body, which counts as immovable
  RigidBody* second = nullptr;       ///< likewise; never both null
  GameObject* firstOwner = nullptr;  ///< owners of the two colliders
  GameObject* secondOwner = nullptr;
};

}  // namespace GalePhysics
