// Twelve arenas of many kinds, run for 120 frames each, as digests of all that happens in them: contacts and overlaps
// in their order with their exact bits, and every body after every frame. Two builds whose digests are equal play
// alike.
//
//   arenas            one line an arena: its name and the digest of its last frame; arenas.txt holds the known ones
//   arenas frames     a line a frame, for finding where two builds part
//
// No sine or cosine is involved, so compilers and machines agree to the last bit.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

#include "bench/scene.h"
#include "build_world.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "physics/generator_host.h"
#include "physics/gravity_generator.h"
#include "physics/make_physical.h"
#include "physics/primitive_assemblage.h"
#include "physics/rigid_body.h"
#include "physics/spring.h"
#include "physics/step.h"
#include "tools/simulate/fnv_hash.h"

namespace {

using GalePhysics::PhysicalShape;

constexpr int kFrames = 120;

// Shares are out of 1.
struct ArenaKind {
  const char* name;
  int count;
  float spread;  // half the side of the square that the bodies start in
  float room;    // half the side of the walled room
  float boxes = 0.5f;
  float ghosts = 0.0f;
  float groupless = 0.0f;  // of collision group 0
  float tilted = 0.0f;     // turned out of the plane and stretched, as a damaged file may have it
  float fixed = 0.1f;
  Vec3 gravity = {};
  Vec3 middle = {};
  bool springs = false;
  bool wholes = false;    // assemblages among them
  bool restless = false;  // bodies change at every touch
  bool runaway = false;   // one leaves the room for good and drags the region with it
};

const ArenaKind kArenas[] = {
    {"discs", 60, 8.0f, 10.0f, 0.0f},
    {"boxes", 60, 8.0f, 10.0f, 1.0f},
    {"crowd", 160, 7.0f, 8.0f},
    {"pile", 80, 0.8f, 30.0f},
    {"corner", 60, 3.0f, 4.0f, 0.5f, 0.1f, 0.0f, 0.0f, 0.1f, {}, {300.0f, -200.0f, 0.0f}},
    {"ghosts", 80, 7.0f, 8.0f, 0.5f, 0.5f},
    {"groups", 80, 7.0f, 8.0f, 0.5f, 0.1f, 0.6f, 0.0f, 0.4f},
    {"rain", 80, 7.0f, 8.0f, 0.5f, 0.0f, 0.0f, 0.0f, 0.2f, {0.0f, -9.0f, 0.0f}},
    {"springs", 50, 7.0f, 10.0f, 0.5f, 0.0f, 0.0f, 0.0f, 0.1f, {0.0f, -2.0f, 0.0f}, {}, true},
    {"damaged", 60, 6.0f, 10.0f, 0.7f, 0.1f, 0.1f, 0.5f},
    {"wholes", 60, 7.0f, 10.0f, 0.5f, 0.1f, 0.0f, 0.0f, 0.1f, {}, {}, false, true},
    {"restless", 90, 8.0f, 10.0f, 0.5f, 0.2f, 0.1f, 0.0f, 0.2f, {}, {}, false, false, true, true},
};

// Grows, moves, turns, changes its group, dies or makes another object, by how often it has been touched.
class Restless final : public Script {
 public:
  void OnContact(const GalePhysics::Contact& /*contact*/) override { Touch(); }
  void OnCollision(const CollisionPair& /*pair*/) override { Touch(); }
  const char* GetName() const override { return "restless"; }

 private:
  void Touch() {
    ++touches_;
    auto* body = owner->Get<GalePhysics::RigidBody>();
    auto* collider = GalePhysics::FindCollider(*owner);
    if (touches_ % 5 == 1) owner->GetTransform().position += Vec3{0.3f, -0.2f, 0.0f};
    if (touches_ % 7 == 2) collider->broadPhaseSize *= 1.1f;
    if (touches_ % 11 == 3) collider->collisionGroup = collider->collisionGroup == 0 ? 1 : 0;
    if (touches_ % 13 == 4) body->velocity = {-body->velocity.y, body->velocity.x, 0.0f};
    if (touches_ % 17 == 5) owner->GetTransform().orientation = {0.6f, 0.0f, 0.0f, 0.8f};
    if (auto* sphere = owner->Get<GalePhysics::SphereCollider>(); sphere != nullptr && touches_ % 3 == 0)
      sphere->radius = sphere->radius > 1.0f ? 0.2f : sphere->radius * 1.05f;
    if (touches_ % 41 == 6) Objects().GetObject(Objects().CreateObject())->GetTransform().position.x = 3.0f;
    if (touches_ == 300) owner->alive = false;
  }

  int touches_ = 0;
};

class Recorder final : public GalePhysics::StepObserver {
 public:
  void OnContact(int subStep, const GalePhysics::Contact& contact) override {
    hash_.AddValue(subStep);
    hash_.AddValue(contact.firstOwner->id);
    hash_.AddValue(contact.secondOwner->id);
    hash_.AddValue(contact.point);
    hash_.AddValue(contact.normal);
    hash_.AddValue(contact.penetration);
  }
  void OnCollision(int subStep, const CollisionPair& pair) override {
    hash_.AddValue(subStep);
    hash_.AddValue(pair.self->id);
    hash_.AddValue(pair.other->id);
  }
  void AddObjects() {
    for (const auto& object : Objects().GetObjects()) {
      hash_.AddValue(object->id);
      hash_.AddValue(object->GetTransform().position);
      hash_.AddValue(object->GetTransform().orientation);
      hash_.AddValue(object->GetTransform().GetMatrix());
      const auto* body = object->Get<GalePhysics::RigidBody>();
      if (body == nullptr) continue;
      for (const Vec3& v : {body->velocity, body->acceleration, body->forceTotal, body->angularVelocity})
        hash_.AddValue(v);
    }
  }
  unsigned long long Get() const { return hash_.Get(); }

 private:
  FnvHash hash_;
};

GameObject& AddPhysical(const GalePhysics::PhysicalDefinition& definition) {
  GameObject& object = *Objects().GetObject(Objects().CreateObject());
  GalePhysics::MakePhysical(object, definition);
  object.GetTransform().Rebuild();
  return object;
}

void AddWalls(const ArenaKind& kind) {
  GalePhysics::PhysicalDefinition wall;
  wall.shape = PhysicalShape::kBox;
  wall.mass = 0.0f;
  wall.rotationLocked = true;
  for (const float side : {-1.0f, 1.0f}) {
    wall.size = {2.0f, 2.0f * kind.room, 0.0f};
    wall.position = kind.middle + Vec3{side * (kind.room + 1.0f), 0.0f, 0.0f};
    AddPhysical(wall);
    wall.size = {2.0f * kind.room, 2.0f, 0.0f};
    wall.position = kind.middle + Vec3{0.0f, side * (kind.room + 1.0f), 0.0f};
    AddPhysical(wall);
  }
}

GameObject& AddBody(const ArenaKind& kind, bench::Xorshift& random) {
  const auto takes = [&](float share) { return random.Between(0.0f, 1.0f) < share; };
  const auto within = [&](float reach) { return random.Between(-reach, reach); };
  GalePhysics::PhysicalDefinition body;
  body.shape = takes(kind.boxes) ? PhysicalShape::kBox : PhysicalShape::kSphere;
  if (kind.wholes && takes(0.2f)) body.shape = PhysicalShape::kAssemblage;
  body.size = {random.Between(0.2f, 0.8f), random.Between(0.2f, 0.8f), 0.0f};
  body.position = kind.middle + Vec3{within(kind.spread), within(kind.spread), 0.0f};
  body.velocity = {within(9.0f), within(9.0f), 0.0f};
  body.mass = takes(kind.fixed) ? 0.0f : random.Between(0.2f, 2.0f);
  if (body.mass == 0.0f) body.velocity = {};
  body.rotationLocked = takes(0.4f);
  body.angularVelocity.z = body.rotationLocked || body.mass == 0.0f ? 0.0f : within(4.0f);
  body.restitution = random.Between(0.2f, 1.0f);
  GameObject& object = AddPhysical(body);
  Transform& transform = object.GetTransform();
  transform.orientation = Normalised(Quaternion{random.Between(0.1f, 1.0f), 0.0f, 0.0f, within(1.0f)});
  if (takes(kind.tilted)) transform.orientation = {1.0f + within(0.2f), within(0.3f), 0.0f, within(1.0f)};
  auto* collider = GalePhysics::FindCollider(object);
  collider->ghost = takes(kind.ghosts);
  collider->collisionGroup = takes(kind.groupless) ? 0 : 1;
  if (auto* whole = object.Get<GalePhysics::PrimitiveAssemblage>())
    whole->AddBoxPart({1.0f, 0.6f, 0.0f}, {within(0.5f), 0.4f, 0.0f}, 0.0f);
  return object;
}

void Build(const ArenaKind& kind) {
  BuildWorld();
  Time() = GameTime{};
  Time().physicsStep = Time().frameStep * kPhysicsShare;
  bench::Xorshift random;
  AddWalls(kind);
  auto& gravity = GalePhysics::AdoptGenerator(std::make_unique<GalePhysics::GravityGenerator>(kind.gravity));
  GameObject* last = nullptr;
  for (int i = 0; i < kind.count; ++i) {
    GameObject& object = AddBody(kind, random);
    auto& body = *object.Get<GalePhysics::RigidBody>();
    if (SquaredLength(kind.gravity) > 0.0f && i % 3 != 0) body.AddGenerator(&gravity);
    if (kind.springs && last != nullptr)
      body.AddGenerator(&GalePhysics::AdoptGenerator(std::make_unique<GalePhysics::Spring>(*last, 3.0f, 1.0f)));
    if (kind.restless && i % 2 == 0)
      object.Insert(std::make_unique<ScriptBox>()).AddScript(std::make_unique<Restless>());
    last = &object;
  }
  if (!kind.runaway) return;
  GalePhysics::PhysicalDefinition runaway;
  runaway.position = {0.0f, 15.0f, 0.0f};
  runaway.velocity = {2.0f, 20.0f, 0.0f};
  AddPhysical(runaway);
}

void RunArena(const ArenaKind& kind, bool everyFrame) {
  Build(kind);
  Recorder recorder;
  GalePhysics::SetStepObserver(&recorder);
  for (int frame = 0; frame < kFrames; ++frame) {
    GalePhysics::RunSubSteps();
    recorder.AddObjects();
    Objects().RemoveDeadObjects();
    if (everyFrame) std::printf("%s %d %016llX\n", kind.name, frame, recorder.Get());
  }
  if (!everyFrame) std::printf("%s %016llX\n", kind.name, recorder.Get());
  GalePhysics::SetStepObserver(nullptr);
  Objects().Reset();
  GalePhysics::ResetGeneratorHost();
}

}  // namespace

int main(int argc, char** argv) {
  SetPrintTarget(stderr);
  const bool everyFrame = argc == 2 && std::strcmp(argv[1], "frames") == 0;
  for (const ArenaKind& kind : kArenas) RunArena(kind, everyFrame);
  return 0;
}
