#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/transform.h"
#include "physics/make_physical.h"
#include "physics/rigid_body.h"
#include "physics/slow_motion.h"
#include "physics/step.h"
#include "test_world.h"

using GalePhysics::MakePhysical;
using GalePhysics::PhysicalShape;
using GalePhysics::RigidBody;

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(Body, MovesByItsOldVelocity) {
  TestWorld world;
  auto& object = world.AddSphere("a", {}, {.velocity = {1.0f, 2.0f, 0.0f}, .acceleration = {0.0f, -1.0f, 0.0f}});
  Time().physicsStep = 0.1f;
  BodyOf(object).Integrate();
  EXPECT_EQ(PositionOf(object), (Vec3{0.1f, 0.2f, 0.0f}));
  EXPECT_FLOAT_EQ(BodyOf(object).velocity.y, 1.9f);
}

TEST(Body, FallsAsFarInAFrameAsTheSubStepsGive) {
  TestWorld world;
  auto& object = world.AddSphere("a", {}, {.acceleration = {0.0f, -1.0f, 0.0f}});
  world.RunFrame();
  EXPECT_NEAR(PositionOf(object).y, -0.000842917f, 1e-9f);
  EXPECT_NEAR(BodyOf(object).velocity.y, -0.0425f, 1e-7f);
}

TEST(Body, TurnsByHalfTheAngleInItsQuaternion) {
  TestWorld world;
  const BodyOptions spinning = {.angularVelocity = {0.0f, 0.0f, 1.0f}, .locked = false};
  auto& free = world.AddSphere("free", {}, spinning);
  auto& locked = world.AddSphere("locked", {5.0f, 0.0f, 0.0f}, {.angularVelocity = {0.0f, 0.0f, 1.0f}});
  world.RunFrame();
  const Quaternion& q = free.GetTransform().orientation;
  EXPECT_NEAR(q.k, std::sin(0.02125f), 1e-6f);
  EXPECT_NEAR(q.r, 0.999774f, 1e-6f);
  EXPECT_NEAR(free.GetTransform().GetMatrix().rotation.m[3], std::sin(0.0425f), 1e-6f) << "the matrix follows";
  EXPECT_EQ(locked.GetTransform().orientation, Quaternion{});
  EXPECT_EQ(BodyOf(locked).angularVelocity, Vec3{});
}

TEST(Body, DampsEverySubStepAndUsesUpForceAndTorque) {
  TestWorld world;
  auto& object = world.AddSphere("a", {}, {.inverseMass = 0.5f, .damping = 0.5f, .locked = false});
  RigidBody& body = BodyOf(object);
  body.forceTotal = {8.0f, 0.0f, 0.0f};
  body.torqueTotal = {0.0f, 0.0f, 6.0f};
  body.Integrate();
  EXPECT_EQ(body.velocity.x, 2.0f) << "force has no step of its own";
  EXPECT_EQ(body.angularVelocity.z, 3.0f);
  body.Integrate();
  EXPECT_EQ(body.velocity.x, 1.0f);
  EXPECT_EQ(body.angularVelocity.z, 1.5f);
  EXPECT_NEAR(RigidBody().damping, 0.9984989f, 1e-7f);
  EXPECT_EQ(RigidBody().inverseMass, 1.0f);
}

TEST(Body, StopsInsteadOfLeavingTheFiniteNumbers) {
  TestWorld world;
  auto& lost = world.AddSphere("lost", {30.0f, 0.0f, 0.0f});
  auto& left = world.AddSphere("left", {}, {.velocity = {1.0f, 0.0f, 0.0f}});
  auto& right = world.AddSphere("right", {1.9f, 0.0f, 0.0f});
  for (int i = 0; i < 3; ++i) {
    BodyOf(lost).velocity.x = i == 0 ? kInfinity : std::numeric_limits<float>::quiet_NaN();
    world.Step();
    EXPECT_EQ(PositionOf(lost), (Vec3{30.0f, 0.0f, 0.0f}));
    EXPECT_EQ(BodyOf(lost).velocity, Vec3{});
  }
  EXPECT_EQ(Count(world.text(), "\n"), 1);
  EXPECT_NEAR(BodyOf(left).velocity.x, 0.0f, 1e-6f) << "the others still collide";
  EXPECT_NEAR(BodyOf(right).velocity.x, 1.0f, 1e-6f);

  auto& far = world.Add("far", {3e38f, 3e38f, 0.0f});
  world.Add("farther", {-3e38f, -3e38f, 0.0f});
  auto& pushed = world.AddSphere("pushed", {0.0f, 10.0f, 0.0f}, {.acceleration = {0.0f, -1.0f, 0.0f}});
  auto& touching = world.AddSphere("touching", {1.9f, 10.0f, 0.0f});
  auto& wall = world.AddSphere("wall", {60.0f, 0.0f, 0.0f}, {.inverseMass = 0.0f});
  world.AddSphere("feather", {61.0f, 0.0f, 0.0f}, {.inverseMass = 1e-39f});
  for (int i = 0; i < 12; ++i) world.AddSphere("crowd", {0.0f, -20.0f, 0.0f});
  for (int i = 0; i < 4; ++i) {
    BodyOf(pushed).forceTotal = {3e38f, 0.0f, 0.0f};
    BodyOf(pushed).inverseMass = 10.0f;
    int heard = 0;
    AddHook(touching).onContact = [&](const GalePhysics::Contact&) { ++heard; };
    world.Step();
    for (const GameObject* object : {&pushed, &touching, &wall}) {
      EXPECT_TRUE(IsFinite(object->GetTransform().position)) << object->name;
      EXPECT_TRUE(IsFinite(object->Get<RigidBody>()->velocity)) << object->name;
    }
    EXPECT_GE(heard, i == 0 ? 1 : 0) << "two far places do not make collisions vanish";
  }
  EXPECT_EQ(BodyOf(pushed).acceleration.y, -1.0f);
  EXPECT_EQ(PositionOf(far).x, 3e38f);
}

TEST(MakePhysical, GivesTheShapesTheirSizesAndInertia) {
  TestWorld world;
  const auto make = [&](PhysicalShape shape, float mass) -> GameObject& {
    auto& object = world.Add("a");
    MakePhysical(object,
                 {.shape = shape, .size = {0.5f, 2.0f, 9.0f}, .angle = 2.0f, .mass = mass, .restitution = 0.5f});
    return object;
  };
  auto& sphere = make(PhysicalShape::kSphere, 4.0f);
  EXPECT_FLOAT_EQ(BodyOf(sphere).GetInverseInertia().m[8], 2.0f);  // 1 / (0.5 m r^2)
  EXPECT_FLOAT_EQ(sphere.GetTransform().orientation.k, std::sin(1.0f));
  EXPECT_EQ(sphere.GetTransform().graphicsScale, (Vec3{0.5f, 2.0f, 9.0f}));
  auto& box = make(PhysicalShape::kBox, 12.0f);
  EXPECT_FLOAT_EQ(BodyOf(box).GetInverseInertia().m[8], 1.0f / 4.25f);  // full edges
  EXPECT_FLOAT_EQ(BodyOf(box).inverseMass, 1.0f / 12.0f);
  EXPECT_EQ(box.Get<GalePhysics::RigidBody>()->owner, &box);
  auto& immovable = make(PhysicalShape::kBox, 0.0f);
  EXPECT_EQ(BodyOf(immovable).inverseMass, 0.0f);
  EXPECT_EQ(BodyOf(immovable).GetInverseInertia().m, Matrix33{}.m);
  EXPECT_EQ(make(PhysicalShape::kNone, 1.0f).GetComponent(Kind::kBoxCollider), nullptr);
}

// 2.5 s of standstill between two ramps of 0.5 s, at 0.017 s a call.
TEST(SlowMotion, RampsStandsStillAndRampsOutCallByCall) {
  TestWorld world;
  auto& damped = world.AddSphere("damped", {}, {.damping = 0.9f});
  auto& undamped = world.AddSphere("undamped", {5.0f, 0.0f, 0.0f}, {.damping = 0.0f});
  StartSlowMotion(2.5f, 0.5f, 0.5f);
  EXPECT_EQ(BodyOf(damped).damping, 1.0f);
  float last = Time().baseFrameStep;
  for (int call = 1; call <= 29; ++call) {
    UpdateSlowMotion();
    EXPECT_GT(Time().frameStep, 0.0f) << call;
    EXPECT_LT(Time().frameStep, last) << call;
    last = Time().frameStep;
  }
  for (int call = 30; call <= 177; ++call) {
    UpdateSlowMotion();
    EXPECT_EQ(Time().frameStep, 0.0f) << call;
  }
  last = 0.0f;
  for (int call = 178; call <= 205; ++call) {
    UpdateSlowMotion();
    EXPECT_GT(Time().frameStep, last) << call;
    last = Time().frameStep;
  }
  EXPECT_NEAR(last, 0.01649f, 1e-5f);
  EXPECT_EQ(BodyOf(damped).damping, 1.0f);
  UpdateSlowMotion();
  EXPECT_EQ(Time().frameStep, 0.0085f);
  EXPECT_EQ(BodyOf(damped).damping, 0.9f);
  EXPECT_EQ(BodyOf(damped).storedDamping, 0.0f);
  EXPECT_EQ(BodyOf(undamped).damping, 1.0f) << "a damping of 0 counts as nothing stored";
  UpdateSlowMotion();
  EXPECT_EQ(Time().frameStep, 0.0085f);
}

TEST(SlowMotion, StartingAgainOrSavingKeepsTheBodysOwnDamping) {
  TestWorld world;
  auto& object = world.AddSphere("a", {}, {.damping = 0.75f});
  StartSlowMotion(1.0f, 0.5f, 0.5f);
  for (int call = 0; call < 40; ++call) UpdateSlowMotion();
  StartSlowMotion(1.0f, 0.5f, 0.5f);
  EXPECT_EQ(Time().frameStep, Time().baseFrameStep);
  Objects().SaveLevel("slow");
  EXPECT_NE(world.ReadFile("slow").find("damping: 0.75\n"), std::string::npos);
  StopSlowMotion();
  EXPECT_EQ(BodyOf(object).damping, 0.75f);
}

}  // namespace
