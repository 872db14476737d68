#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/world_fixture.h"
#include "physics/generator_host.h"
#include "physics/spring.h"
#include "physics/wobbly_puller.h"

using GalePhysics::AdoptGenerator;
using GalePhysics::Spring;
using GalePhysics::WobblyPuller;

namespace {

using GeneratorTest = WorldFixture;

TEST_F(GeneratorTest, ASpringPullsInProportionToItsStretch) {
  auto& anchor = world.AddSphere("anchor", {3.0f, 0.0f, 0.0f}, {.inverseMass = 0.0f, .radius = 0.1f});
  auto& object = world.AddSphere("a", {}, {.radius = 0.1f});
  auto& spring = AdoptGenerator(std::make_unique<Spring>(anchor, 10.0f, 2.0f));
  BodyOf(object).AddGenerator(&spring);
  world.Step();
  EXPECT_NEAR(BodyOf(object).velocity.x, 0.0283334f, 1e-6f);
  world.Step(14);
  EXPECT_NEAR(BodyOf(object).velocity.x, 0.423966f, 1e-6f);
  EXPECT_NEAR(PositionOf(object).x, 0.0084204f, 1e-6f);

  const auto firstPush = [&](float distance) {
    PositionOf(object) = {3.0f - distance, 0.0f, 0.0f};
    BodyOf(object).velocity = {};
    world.Step();
    return BodyOf(object).velocity.x;
  };
  EXPECT_EQ(firstPush(2.0f), 0.0f);
  EXPECT_LT(firstPush(1.0f), 0.0f);
  EXPECT_EQ(firstPush(0.0f), 0.0f) << "no direction, no force";
  EXPECT_TRUE(spring.HasBase());
  anchor.alive = false;
  Objects().RemoveDeadObjects();
  EXPECT_FALSE(spring.HasBase());
  EXPECT_EQ(firstPush(3.0f), 0.0f);
}

TEST_F(GeneratorTest, AWobblyPullGrowsAndItsSidewaysPushFlips) {
  auto& target = world.Add("target", {3.0f, 4.0f, 0.0f});
  auto& a = world.AddSphere("a", {});
  auto& b = world.AddSphere("b", {});
  auto& puller = AdoptGenerator(std::make_unique<WobblyPuller>(target.id, 2.0f, 1.25f, 0.5f));
  const auto expectPull = [&](GameObject& object, float x, float y) {
    puller.UpdateForce(BodyOf(object));
    EXPECT_NEAR(BodyOf(object).acceleration.x, x, 1e-5f);
    EXPECT_NEAR(BodyOf(object).acceleration.y, y, 1e-5f);
  };
  BodyOf(a).acceleration = {100.0f, 0.0f, 0.0f};
  expectPull(a, 5.0f, 8.75f);
  Time().elapsedTime = 0.5f;
  expectPull(a, 5.0f, 8.75f);  // the period must have passed, not just be reached
  Time().elapsedTime = 0.51f;
  expectPull(a, 7.0f, 7.25f);
  expectPull(b, 7.0f, 7.25f);  // the second body shares the flip and makes none of its own
  EXPECT_FLOAT_EQ(puller.lastWobbleTime, 0.51f);
  target.alive = false;
  Objects().RemoveDeadObjects();
  expectPull(a, 7.0f, 7.25f);  // what was set last stays

  WobblyPuller withoutTarget;
  withoutTarget.forwardPower = 3.0f;
  PositionOf(Objects().GetCursor()) = {0.0f, 2.0f, 0.0f};
  withoutTarget.UpdateForce(BodyOf(b));
  EXPECT_EQ(BodyOf(b).acceleration, (Vec3{0.0f, 6.0f, 0.0f})) << "it follows the cursor";
}

}  // namespace
