// What one sub-step of the engine's physics costs, from real objects to resolved contacts.
//
//   physics_step                          every row, see MeasureAndPrint
//   physics_step instr engine N FRAMES    one scaled arena for callgrind (--instr-atstart=no): only FRAMES frames after
//                                         a warm-up of the same length are counted
#include <valgrind/callgrind.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "bench/scene.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "physics/bounds.h"
#include "physics/make_physical.h"
#include "physics/primitive_assemblage.h"
#include "physics/rigid_body.h"
#include "physics/step.h"

namespace {

using bench::ArenaSize;
using GalePhysics::RigidBody;

constexpr char kSetting[] = "engine";

// Counts the contacts of the last step.
class ContactCounter final : public GalePhysics::StepObserver {
 public:
  void OnContact(int /*subStep*/, const GalePhysics::Contact& /*contact*/) override { ++count; }
  void OnOverlap(int /*subStep*/, const GalePhysics::OverlapPair& /*pair*/) override {}
  int count = 0;
};

struct Candidate {
  GalePhysics::Bounds bounds;
  std::uint32_t group;
};

bool MayTouch(const Candidate& a, const Candidate& b) {
  const GalePhysics::Bounds& p = a.bounds;
  const GalePhysics::Bounds& q = b.bounds;
  const bool apart = p.minX > q.maxX || q.minX > p.maxX || p.minY > q.maxY || q.minY > p.maxY;
  return !apart && GalePhysics::GroupsMeet(a.group, b.group);
}

class EngineWorld {
 public:
  explicit EngineWorld(const bench::Arena& arena) {
    Time() = GameTime{};
    Time().physicsStep = bench::kStep;
    for (const bench::Obstacle& obstacle : arena.obstacles) AddObstacle(obstacle);
    for (const bench::Mover& mover : arena.movers) AddMover(mover);
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
    if (++steps_ % bench::kStepsPerFrame == 0) CapSpeeds();
  }

  double MeanSquareSpeed() const {
    double sum = 0.0;
    for (const RigidBody* body : movers_) sum += static_cast<double>(SquaredLength(body->velocity));
    return sum / static_cast<double>(movers_.size());
  }

  bench::Census Count() const {
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

  static void AddObstacle(const bench::Obstacle& obstacle) {
    GalePhysics::PhysicalDefinition definition;
    definition.shape = GalePhysics::PhysicalShape::kBox;
    definition.size = {2.0f * obstacle.halfX, 2.0f * obstacle.halfY, 0.0f};
    definition.position = {obstacle.x, obstacle.y, 0.0f};
    definition.mass = 0.0f;
    definition.rotationLocked = true;
    // Like the stage's own walls, which never meet each other.
    AddPhysical(definition).Get<GalePhysics::BoxCollider>()->collisionGroup = 0;
  }

  void AddMover(const bench::Mover& mover) {
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
      if (squared > bench::kTopSpeed * bench::kTopSpeed) body->velocity *= bench::kTopSpeed / std::sqrt(squared);
    }
  }

  std::vector<RigidBody*> movers_;
  ContactCounter counter_;
  int steps_ = 0;
};

void CountInstructions(int count, int frames) {
  EngineWorld world(bench::MakeArena(count, ArenaSize::kScaled));
  for (int i = 0; i < frames * bench::kStepsPerFrame; ++i) world.Step();
  CALLGRIND_START_INSTRUMENTATION;
  for (int i = 0; i < frames * bench::kStepsPerFrame; ++i) world.Step();
  CALLGRIND_STOP_INSTRUMENTATION;
}

void MeasureRow(int count, ArenaSize size) {
  EngineWorld world(bench::MakeArena(count, size));
  bench::MeasureAndPrint(world, kSetting, size, count);
}

}  // namespace

int main(int argc, char** argv) {
  SetPrintTarget(stderr);
  if (argc == 5 && std::strcmp(argv[1], "instr") == 0 && std::strcmp(argv[2], kSetting) == 0) {
    CountInstructions(std::max(1, std::atoi(argv[3])), std::max(1, std::atoi(argv[4])));
    return 0;
  }
  if (argc != 1) {
    std::fprintf(stderr, "usage: physics_step [instr %s BODIES FRAMES]\n", kSetting);
    return 2;
  }
  for (const int count : {16, 64, 256, 1024, 4096}) MeasureRow(count, ArenaSize::kScaled);
  for (const int count : {16, 64, 256}) MeasureRow(count, ArenaSize::kFixed);
  return 0;
}
