// The linear part of a body's state.
#pragma once

#include "core/component.h"
#include "physics/math/vec3.h"

namespace GalePhysics {

class PointMass : public Component {
 public:
  Vec3 velocity;               ///< world units per body second
  Vec3 acceleration;           ///< units per body second squared, applied every sub-step; a generator may overwrite it
  Vec3 forceTotal;             ///< what generators add; emptied by every integration
  float damping = 1.0f;        ///< velocities are multiplied by it every sub-step
  float storedDamping = 0.0f;  ///< the damping to give back after slow motion; 0: nothing stored
  float inverseMass = 1.0f;    ///< 1 / mass; 0: immovable
  float storedInverseMass = 0.0f;  ///< the one to give back after a script has lent a 0; 0: nothing stored

  /// The values that are the body's own, which a file keeps: what is lent to it comes and goes.
  float OwnDamping() const { return storedDamping != 0.0f ? storedDamping : damping; }
  float OwnInverseMass() const { return storedInverseMass != 0.0f ? storedInverseMass : inverseMass; }

 protected:
  /// A mass of exactly 0 means immovable.
  PointMass(const Vec3& startVelocity, const Vec3& startAcceleration, float startDamping, float mass)
      : velocity(startVelocity),
        acceleration(startAcceleration),
        damping(startDamping),
        inverseMass(mass == 0.0f ? 0.0f : 1.0f / mass) {}
};

}  // namespace GalePhysics
