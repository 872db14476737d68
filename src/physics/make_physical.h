// Turns a freshly made object into one that moves and collides.
#pragma once

#include "core/game_object.h"
#include "physics/math/vec3.h"

namespace GalePhysics {

enum class PhysicalShape { kBox = 0, kSphere = 1, kAssemblage = 2, kNone = 3 };

struct PhysicalDefinition {
  PhysicalShape shape = PhysicalShape::kSphere;
  Vec3 size = {1.0f, 1.0f, 0.0f};  ///< box: full edges in x and y; sphere: radius in x. Becomes the graphics scale too
  Vec3 position = {};
  float angle = 0.0f;      ///< radians about z
  Vec3 velocity = {};      ///< units per body second
  Vec3 acceleration = {};  ///< units per body second squared
  float mass = 1.0f;       ///< 0: immovable
  bool rotationLocked = false;
  Vec3 angularVelocity = {};  ///< radians per body second
  float restitution = 1.0f;   ///< of the collider
};

/// Places the object and gives it a body and a collider of the shape; kNone makes a body alone.
void MakePhysical(GameObject& object, const PhysicalDefinition& definition);

}  // namespace GalePhysics
