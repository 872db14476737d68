#include "physics/step.h"

#include <cassert>
#include <utility>
#include <vector>

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/transform.h"
#include "physics/broad_phase.h"
#include "physics/rigid_body.h"

namespace GalePhysics {

namespace {

// Share of the impulse that turns the bodies.
constexpr float kAngularShare = 0.125f;

struct World {
  BroadPhase broadPhase;
  Findings findings;
  std::vector<RigidBody*> moving;  // good until somebody outside the physics is called
  StepObserver* observer = nullptr;
  int subStep = 0;
};

World& GetWorld() {
  static World world;
  return world;
}

bool HasPoint(const Contact& contact) { return !(contact.point == Contact::kNoPoint); }

// Gives whether the body is not at rest. If it is, nobody and nothing drove it and the step changed nothing of it or
// its matrix: later ones will not either, until somebody touches it.
bool Move(RigidBody& body) {
  Transform& transform = body.owner->GetTransform();
  if (!body.IsStill()) {
    body.Integrate();
    transform.Rebuild();
    return true;
  }
  const Vec3 position = transform.position;
  const Quaternion orientation = transform.orientation;
  body.Integrate();
  return transform.Rebuild() || !(transform.position == position) || !(transform.orientation == orientation);
}

// By index: callbacks may append objects, which join the next sub-step.
void MoveAll() {
  std::vector<RigidBody*>& moving = GetWorld().moving;
  moving.clear();
  const auto& objects = Objects().GetObjects();
  for (std::size_t i = 0; i < objects.size(); ++i) {
    RigidBody* body = objects[i]->Get<RigidBody>();
    if (body == nullptr) {
      objects[i]->GetTransform().Rebuild();
      continue;
    }
    body->atRest = !Move(*body);
    if (!body->atRest) moving.push_back(body);
  }
}

void MoveMoving() {
  for (RigidBody* body : GetWorld().moving) {
    body->Integrate();
    body->owner->GetTransform().Rebuild();
  }
}

void RefreshTransforms() {
  for (const auto& object : Objects().GetObjects()) object->GetTransform().Rebuild();
}

void Detect(Look look) {
  World& world = GetWorld();
  world.findings.contacts.clear();
  world.findings.overlaps.clear();
  world.broadPhase.Detect(Objects().GetObjects(), look, world.findings);
}

void DeliverAndResolve(const Contact& contact) {
  if (contact.first != nullptr) contact.firstOwner->OnContact(contact);
  if (contact.second != nullptr) {
    Contact swapped = contact;  // the normal keeps its direction
    std::swap(swapped.first, swapped.second);
    std::swap(swapped.firstOwner, swapped.secondOwner);
    contact.secondOwner->OnContact(swapped);
  }
  // A callback that replaced a body would leave the rest of this step's contacts dangling.
  assert(contact.first == nullptr || contact.firstOwner->Get<RigidBody>() == contact.first);
  assert(contact.second == nullptr || contact.secondOwner->Get<RigidBody>() == contact.second);
  const float totalInverseMass = (contact.first == nullptr ? 0.0f : contact.first->inverseMass) +
                                 (contact.second == nullptr ? 0.0f : contact.second->inverseMass);
  if (!(totalInverseMass > 0.0f)) return;
  ResolveVelocity(contact, totalInverseMass);
  ResolveInterpenetration(contact, totalInverseMass);
}

void Deliver(const CollisionPair& pair) {
  World& world = GetWorld();
  if (world.observer != nullptr) world.observer->OnCollision(world.subStep, pair);
  pair.self->OnCollision(pair);
  pair.other->OnCollision({pair.other, pair.self});
}

Vec3 PlaceOf(const RigidBody& body) { return body.owner->GetTransform().position; }

// Velocity that a body's turning gives the contact point.
Vec3 TurningAt(const RigidBody& body, const Vec3& point) { return Cross(body.angularVelocity, point - PlaceOf(body)); }

}  // namespace

namespace {

// Gives whether somebody outside the physics has been called, and may have changed anything.
bool TellAndResolve() {
  World& world = GetWorld();
  for (std::size_t i = 0; i < world.findings.contacts.size(); ++i) {
    const Contact contact = world.findings.contacts[i];
    if (world.observer != nullptr) world.observer->OnContact(world.subStep, contact);
    DeliverAndResolve(contact);
  }
  for (std::size_t i = 0; i < world.findings.overlaps.size(); ++i) Deliver(CollisionPair(world.findings.overlaps[i]));
  return world.findings.Size() > 0;
}

// `look` says what may have changed since the last sub-step; the answer, what may have for the next.
Look RunSubStep(Look look) {
  look == Look::kAll ? MoveAll() : MoveMoving();
  Detect(look);
  if (!TellAndResolve()) return Look::kMoving;
  RefreshTransforms();
  return Look::kAll;
}

}  // namespace

void StepPhysics() { RunSubStep(Look::kAll); }

void DetectOverlapsOnly() {
  Detect(Look::kAll);
  World& world = GetWorld();
  world.findings.contacts.clear();
  const auto hasMouse = [](const GameObject& object) { return object.GetComponent(Kind::kMouseComponent) != nullptr; };
  for (std::size_t i = 0; i < world.findings.overlaps.size(); ++i) {
    const CollisionPair pair = world.findings.overlaps[i];
    if (hasMouse(*pair.self) || hasMouse(*pair.other)) Deliver(pair);
  }
}

float SeparatingVelocity(const Contact& contact) {
  const RigidBody* first = contact.first;
  const RigidBody* second = contact.second;
  Vec3 v = first == nullptr ? Vec3{} : first->velocity;
  if (second != nullptr) v -= second->velocity;
  if (HasPoint(contact)) {
    if (first != nullptr) v += TurningAt(*first, contact.point);
    if (second != nullptr) v -= TurningAt(*second, contact.point);
  }
  return Dot(v, contact.normal);
}

void ResolveVelocity(const Contact& contact, float totalInverseMass) {
  const float separating = SeparatingVelocity(contact);
  if (separating >= 0.0f) return;
  const Vec3 impulse = contact.normal * ((-contact.restitution * separating - separating) / totalInverseMass);
  const Vec3 turning = impulse * kAngularShare;
  if (RigidBody* body = contact.first) {
    body->velocity += impulse * body->inverseMass;
    if (HasPoint(contact))
      body->angularVelocity += body->GetInverseInertiaWorldInverse() * Cross(contact.point - PlaceOf(*body), turning);
  }
  if (RigidBody* body = contact.second) {
    body->velocity -= impulse * body->inverseMass;
    if (HasPoint(contact))
      body->angularVelocity += body->GetInverseInertiaWorldInverse() * Cross(PlaceOf(*body) - contact.point, turning);
  }
}

void ResolveInterpenetration(const Contact& contact, float totalInverseMass) {
  if (!(contact.penetration > 0.0f)) return;
  const Vec3 way = contact.normal * (contact.penetration / totalInverseMass);
  if (!IsFinite(way)) return;  // masses or radii at the rim of the numbers
  if (contact.first != nullptr) contact.first->owner->GetTransform().position += way * contact.first->inverseMass;
  if (contact.second != nullptr) contact.second->owner->GetTransform().position -= way * contact.second->inverseMass;
}

StepObserver* SetStepObserver(StepObserver* observer) { return std::exchange(GetWorld().observer, observer); }

void RunSubSteps() {
  World& world = GetWorld();
  Look look = Look::kAll;
  for (world.subStep = 0; world.subStep < kSubSteps; ++world.subStep) look = RunSubStep(look);
  world.subStep = 0;
}

}  // namespace GalePhysics
