#include <cmath>
#include <limits>

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/transform.h"
#include "core/world_fixture.h"
#include "physics/make_physical.h"
#include "physics/rigid_body.h"
#include "physics/slow_motion.h"

using GalePhysics::PhysicalShape;
using GalePhysics::RigidBody;

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

using BodyTest = WorldFixture;
using MakePhysicalTest = WorldFixture;
using SlowMotionTest = WorldFixture;

// The place follows from the velocity before each sub-step.
TEST_F(BodyTest, FallsAndTurnsInAFrameAsTheSubStepsGive) {
  auto& falling = world.AddSphere("falling", {}, {.acceleration = {0.0f, -1.0f, 0.0f}});
  auto& locked = world.AddSphere("locked", {5.0f, 0.0f, 0.0f}, {.angularVelocity = {0.0f, 0.0f, 1.0f}});
  auto& free = world.AddSphere("free", {10.0f, 0.0f, 0.0f}, {.angularVelocity = {0.0f, 0.0f, 1.0f}, .locked = false});
  world.RunFrame();
  EXPECT_NEAR(PositionOf(falling).y, -0.000842917f, 1e-9f);
  EXPECT_NEAR(BodyOf(falling).velocity.y, -0.0425f, 1e-7f);
  EXPECT_EQ(locked.GetTransform().orientation, Quaternion{});
  EXPECT_NEAR(free.GetTransform().orientation.k, std::sin(0.02125f), 1e-6f) << "half the angle in a quaternion";
  EXPECT_NEAR(free.GetTransform().GetMatrix().rotation.m[3], std::sin(0.0425f), 1e-6f) << "the matrix follows";
}

TEST_F(BodyTest, DampsEverySubStepAndUsesUpForceAndTorque) {
  RigidBody& body = BodyOf(world.AddSphere("a", {}, {.inverseMass = 0.5f, .damping = 0.5f, .locked = false}));
  body.forceTotal = {8.0f, 0.0f, 0.0f};
  body.torqueTotal = {0.0f, 0.0f, 6.0f};
  body.Integrate();
  EXPECT_EQ(body.velocity.x, 2.0f) << "force has no step of its own";
  EXPECT_EQ(body.angularVelocity.z, 3.0f);
  body.Integrate();
  EXPECT_EQ(body.velocity.x, 1.0f);
  EXPECT_EQ(body.angularVelocity.z, 1.5f);
  EXPECT_NEAR(RigidBody().damping, 0.9984989f, 1e-7f);
}

TEST_F(BodyTest, StopsInsteadOfLeavingTheFiniteNumbersAndTheOthersStillCollide) {
  auto& far = world.Add("far", {3e38f, 3e38f, 0.0f});
  world.Add("farther", {-3e38f, -3e38f, 0.0f});
  world.Add("nowhere", {kInfinity, 0.0f, 0.0f});
  world.Add("nowhere", {0.0f, -kInfinity, 0.0f});
  auto& lost = world.AddSphere("lost", {30.0f, 0.0f, 0.0f});
  auto& pushed = world.AddSphere("pushed", {0.0f, 10.0f, 0.0f}, {.acceleration = {0.0f, -1.0f, 0.0f}});
  auto& touching = world.AddSphere("touching", {1.9f, 10.0f, 0.0f});
  auto& wall = world.AddSphere("wall", {60.0f, 0.0f, 0.0f}, {.inverseMass = 0.0f});
  world.AddSphere("feather", {61.0f, 0.0f, 0.0f}, {.inverseMass = 1e-39f});
  auto& inside = world.AddSphere("inside", {0.0f, -40.0f, 0.0f}, {.radius = 0.1f});
  world.AddBox("box", {0.0f, -40.0f, 0.0f}, {.inverseMass = 0.0f});
  auto& crowd = world.AddSphere("crowd", {0.0f, -20.0f, 0.0f});
  for (int i = 0; i < 11; ++i) world.AddSphere("crowd", {0.0f, -20.0f, 0.0f});
  int heard = 0;
  AddHook(touching).onContact = [&](const GalePhysics::Contact&) { ++heard; };
  BodyOf(pushed).inverseMass = 10.0f;
  for (const float speed : {kInfinity, std::numeric_limits<float>::quiet_NaN(), 0.0f, 0.0f}) {
    BodyOf(lost).velocity.x = speed;
    BodyOf(pushed).forceTotal = {3e38f, 0.0f, 0.0f};
    world.Step();
    EXPECT_EQ(BodyOf(lost).velocity, Vec3{});
    EXPECT_GT(heard, 0) << "far and lost places do not make collisions vanish";
    for (const GameObject* object : {&pushed, &touching, &wall, &inside, &crowd}) {
      EXPECT_TRUE(IsFinite(object->GetTransform().position)) << object->name;
      EXPECT_TRUE(IsFinite(object->Get<RigidBody>()->velocity)) << object->name;
    }
  }
  EXPECT_EQ(Count(world.text(), "lost: left the finite numbers"), 1);
  EXPECT_EQ(PositionOf(lost), (Vec3{30.0f, 0.0f, 0.0f}));
  EXPECT_EQ(BodyOf(pushed).acceleration.y, -1.0f);
  EXPECT_EQ(PositionOf(far).x, 3e38f);
  EXPECT_EQ(PositionOf(crowd), (Vec3{0.0f, -20.0f, 0.0f})) << "one place, no direction to part in";
}

TEST_F(MakePhysicalTest, GivesTheShapesTheirInertia) {
  const auto make = [&](PhysicalShape shape, float mass) -> GameObject& {
    auto& object = world.Add("a");
    GalePhysics::MakePhysical(object, {.shape = shape, .size = {0.5f, 2.0f, 9.0f}, .angle = 2.0f, .mass = mass});
    return object;
  };
  auto& sphere = make(PhysicalShape::kSphere, 4.0f);
  EXPECT_FLOAT_EQ(BodyOf(sphere).GetInverseInertia().m[8], 2.0f);  // 1 / (0.5 m r^2)
  EXPECT_FLOAT_EQ(sphere.GetTransform().orientation.k, std::sin(1.0f));
  const RigidBody& box = BodyOf(make(PhysicalShape::kBox, 12.0f));
  EXPECT_FLOAT_EQ(box.GetInverseInertia().m[8], 1.0f / 4.25f);  // full edges
  EXPECT_FLOAT_EQ(box.inverseMass, 1.0f / 12.0f);
  const RigidBody& immovable = BodyOf(make(PhysicalShape::kBox, 0.0f));
  EXPECT_EQ(immovable.inverseMass, 0.0f);
  EXPECT_EQ(immovable.GetInverseInertia().m, Matrix33{}.m);
}

// 2.5 s of standstill between two ramps of 0.5 s, at 0.017 s a call.
TEST_F(SlowMotionTest, RampsStandsStillAndRampsOutCallByCall) {
  auto& damped = world.AddSphere("damped", {}, {.damping = 0.9f});
  auto& undamped = world.AddSphere("undamped", {5.0f, 0.0f, 0.0f}, {.damping = 0.0f});
  StartSlowMotion(2.5f, 0.5f, 0.5f);
  float last = Time().baseFrameStep;
  for (int call = 1; call <= 205; ++call) {
    UpdateSlowMotion();
    const float step = Time().frameStep;
    EXPECT_TRUE(call < 30 || call > 177 ? step > 0.0f : step == 0.0f) << call;
    EXPECT_TRUE(call < 30 ? step < last : call < 178 || step > last) << call;
    last = step;
  }
  EXPECT_NEAR(last, 0.01649f, 1e-5f);
  EXPECT_EQ(BodyOf(damped).damping, 1.0f);
  UpdateSlowMotion();
  EXPECT_EQ(Time().frameStep, 0.0085f);
  EXPECT_EQ(BodyOf(damped).damping, 0.9f);
  EXPECT_EQ(BodyOf(damped).storedDamping, 0.0f);
  EXPECT_EQ(BodyOf(undamped).damping, 1.0f) << "a damping of 0 counts as nothing stored";
}

TEST_F(SlowMotionTest, StartingAgainOrSavingKeepsTheBodysOwnDamping) {
  auto& object = world.AddSphere("a", {}, {.damping = 0.75f});
  StartSlowMotion(1.0f, 0.5f, 0.5f);
  for (int call = 0; call < 40; ++call) UpdateSlowMotion();
  StartSlowMotion(1.0f, 0.5f, 0.5f);
  EXPECT_EQ(Time().frameStep, Time().baseFrameStep);
  EXPECT_EQ(Count(Document({&object}), "damping: 0.75\n"), 1);
  StopSlowMotion();
  EXPECT_EQ(BodyOf(object).damping, 0.75f);
}

}  // namespace
