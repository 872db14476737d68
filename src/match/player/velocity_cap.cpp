#include "match/player/velocity_cap.h"

#include <algorithm>
#include <cmath>

#include "core/field_bar.h"
#include "core/game_object.h"
#include "physics/rigid_body.h"

void VelocityCap::Update(float /*step*/) {
  auto* body = owner->Get<GalePhysics::RigidBody>();
  if (body == nullptr || !(Length(body->velocity) >= kTopSpeed)) return;
  Vec3& v = body->velocity;
  // A length beyond the largest float has no direction; a part of it has.
  if (!std::isfinite(Length(v))) v *= 1.0f / std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
  v = Normalised(v) * kTopSpeed;
}

void VelocityCap::AddToTweakBar(FieldBar& bar) { bar.AddEmptyGroup("VelocityCap"); }
