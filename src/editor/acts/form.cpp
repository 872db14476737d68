#include "editor/acts/form.h"

#include "core/transform.h"
#include "physics/box_collider.h"
#include "physics/rigid_body.h"
#include "physics/sphere_collider.h"

using GalePhysics::BoxCollider;
using GalePhysics::RigidBody;
using GalePhysics::SphereCollider;

Form TakeForm(const GameObject& object) {
  const Transform& transform = object.GetTransform();
  Form form{transform.position, transform.orientation, transform.graphicsScale, {}, {}};
  if (const auto* body = object.Get<RigidBody>()) form.velocity = body->velocity;
  if (const auto* box = object.Get<BoxCollider>()) form.halfExtents = box->halfExtents;
  if (const auto* sphere = object.Get<SphereCollider>()) form.radius = sphere->radius;
  if (const auto* collider = GalePhysics::FindCollider(object)) form.broadPhaseSize = collider->broadPhaseSize;
  return form;
}

void ChangeForm(GameObject& object, const Form& from, const Form& to) {
  const auto change = [&](auto Form::*part, auto& target) {
    if (!(from.*part == to.*part)) target = to.*part;
  };
  Transform& transform = object.GetTransform();
  change(&Form::position, transform.position);
  change(&Form::orientation, transform.orientation);
  change(&Form::graphicsScale, transform.graphicsScale);
  if (auto* body = object.Get<RigidBody>()) change(&Form::velocity, body->velocity);
  if (auto* box = object.Get<BoxCollider>()) change(&Form::halfExtents, box->halfExtents);
  if (auto* sphere = object.Get<SphereCollider>()) change(&Form::radius, sphere->radius);
  if (auto* collider = GalePhysics::FindCollider(object)) change(&Form::broadPhaseSize, collider->broadPhaseSize);
  transform.Rebuild();
}
