#include "match/player/velocity_cap.h"

#include "core/field_bar.h"
#include "core/game_object.h"
#include "physics/rigid_body.h"

void VelocityCap::Update(float /*step*/) {
  auto* body = owner->Get<GalePhysics::RigidBody>();
  if (body != nullptr && Length(body->velocity) >= kTopSpeed) body->velocity = Normalised(body->velocity) * kTopSpeed;
}

void VelocityCap::AddToTweakBar(FieldBar& bar) { bar.AddEmptyGroup("VelocityCap"); }
