#include "scripts/hazards/cannonball.h"

#include "core/transform.h"
#include "physics/rigid_body.h"
#include "scripts/archetype.h"

void FireCannonball(const Vec3& place, const Vec3& velocity) {
  const GameObject* ball = CreateFromArchetype("cannonball");
  if (ball == nullptr) return;
  ball->GetTransform().position = place;
  if (auto* body = ball->Get<GalePhysics::RigidBody>()) body->velocity = velocity;
}
