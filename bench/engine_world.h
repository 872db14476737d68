// The measured arena as real objects of the engine.
#pragma once

#include <vector>

#include "bench/scene.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "physics/bounds.h"
#include "physics/make_physical.h"
#include "physics/primitive_assemblage.h"
#include "physics/rigid_body.h"
#include "physics/step.h"

namespace bench {

using GalePhysics::RigidBody;

// Counts the contacts of the last step.
class ContactCounter final : public GalePhysics::StepObserver {
 public:
  void OnContact(int /*subStep*/, const GalePhysics::Contact& /*contact*/) override { ++count; }
  void OnCollision(int /*subStep*/, const CollisionPair& /*pair*/) override {}
  int count = 0;
};

struct Candidate {
  GalePhysics::Bounds bounds;
  std::uint32_t group;
};

bool MayTouch(const Candidate& a, const Candidate& b) {
  return !GalePhysics::AreApart(a.bounds, GalePhysics::OppositeBounds(b.bounds)) &&
         (GalePhysics::MeetsAll(a.group) || GalePhysics::MeetsAll(b.group));
}

class EngineWorld {
 public:
  explicit EngineWorld(const Arena& arena) {
    Time() = GameTime{};
    Time().physicsStep = kStep;
    for (const Obstacle& obstacle : arena.obstacles) AddObstacle(obstacle);
    for (const Mover& mover : arena.movers) AddMover(mover);
    GalePhysics::SetStepObserver(&counter_);
  }
  EngineWorld(const EngineWorld&) = delete;
  EngineWorld& operator=(const EngineWorld&) = delete;
  ~EngineWorld() {
    GalePhysics::SetStepObserver(nullptr);
    Objects().Reset();
  }

  void Step() {
    counter_.count = 0;
    GalePhysics::StepPhysics();
    if (++steps_ % kStepsPerFrame == 0) CapSpeeds();
  }

  double MeanSquareSpeed() const {
    double sum = 0.0;
    for (const RigidBody* body : movers_) sum += static_cast<double>(SquaredLength(body->velocity));
    return sum / static_cast<double>(movers_.size());
  }

  Census Count() const {
    std::vector<Candidate> candidates;
    for (const auto* box : GalePhysics::ShapeListing<GalePhysics::BoxCollider>::List())
      candidates.push_back({TightBounds(*box), box->collisionGroup});
    for (const auto* sphere : GalePhysics::ShapeListing<GalePhysics::SphereCollider>::List())
      candidates.push_back({TightBounds(*sphere), sphere->collisionGroup});
    int pairs = 0;
    for (std::size_t i = 0; i < candidates.size(); ++i)
      for (std::size_t j = i + 1; j < candidates.size(); ++j) pairs += MayTouch(candidates[i], candidates[j]) ? 1 : 0;
    return {static_cast<double>(pairs), static_cast<double>(counter_.count)};
  }

 private:
  static GameObject& AddPhysical(const GalePhysics::PhysicalDefinition& definition) {
    GameObject& object = *Objects().GetObject(Objects().CreateObject());
    GalePhysics::MakePhysical(object, definition);
    object.Get<RigidBody>()->damping = 1.0f;
    return object;
  }

  static void AddObstacle(const Obstacle& obstacle) {
    GalePhysics::PhysicalDefinition definition;
    definition.shape = GalePhysics::PhysicalShape::kBox;
    definition.size = {2.0f * obstacle.halfX, 2.0f * obstacle.halfY, 0.0f};
    definition.position = {obstacle.x, obstacle.y, 0.0f};
    definition.mass = 0.0f;
    definition.rotationLocked = true;
    // Like the stage's own walls, which never meet each other.
    AddPhysical(definition).Get<GalePhysics::BoxCollider>()->collisionGroup = 0;
  }

  void AddMover(const Mover& mover) {
    GalePhysics::PhysicalDefinition definition;
    definition.position = {mover.x, mover.y, 0.0f};
    definition.angle = mover.angle;
    definition.velocity = {mover.velocityX, mover.velocityY, 0.0f};
    if (mover.isCircle) {
      definition.shape = GalePhysics::PhysicalShape::kSphere;
      definition.size = {mover.radius, mover.radius, 0.0f};
      definition.mass = kPi * mover.radius * mover.radius;
    } else {
      definition.shape = GalePhysics::PhysicalShape::kBox;
      definition.size = {2.0f * mover.halfX, 2.0f * mover.halfY, 0.0f};
      definition.mass = definition.size.x * definition.size.y;
    }
    movers_.push_back(AddPhysical(definition).Get<RigidBody>());
  }

  // The impulses ignore what turning costs, so turning bodies gain speed; the game caps its players once a frame, too.
  void CapSpeeds() {
    for (RigidBody* body : movers_) {
      const float squared = SquaredLength(body->velocity);
      if (squared > kTopSpeed * kTopSpeed) body->velocity *= kTopSpeed / std::sqrt(squared);
    }
  }

  std::vector<RigidBody*> movers_;
  ContactCounter counter_;
  int steps_ = 0;
};

}  // namespace bench
