#include "scripts/cannonball.h"

#include "core/transform.h"
#include "match/archetype.h"
#include "physics/rigid_body.h"

void FireCannonball(const Vec3& place, const Vec3& velocity) {
  const GameObject* ball = CreateFromArchetype("cannonball");
  if (ball == nullptr) return;
  ball->GetTransform().position = place;
  if (auto* body = ball->Get<GalePhysics::RigidBody>()) body->velocity = velocity;
}
