#include <algorithm>
#include <cmath>
#include <set>

#include "match/give_points.h"
#include "physics/sphere_collider.h"
#include "script_test.h"
#include "scripts/broad_side.h"
#include "scripts/fountain.h"
#include "scripts/one_way_into_stage.h"
#include "scripts/prison_script.h"
#include "scripts/squishy.h"
#include "scripts/vortex.h"

namespace {

class HazardTest : public ScriptTest {
 public:
  // Objects of that name which were not there at the last call.
  std::vector<GameObject*> NewOnes(std::string_view name) {
    std::vector<GameObject*> found = FindAll(name);
    std::erase_if(found, [&](const GameObject* object) { return !known_.insert(object->id).second; });
    return found;
  }
  bool FiresIn(int frames) {
    Run(frames);
    return !NewOnes("cannonball").empty();
  }
  void Overlap(GameObject& other, int times = 1) {
    for (int i = 0; i < times; ++i) holder.OnCollision({&holder, &other});
  }
  static const Vec3& ScaleOf(GameObject& object) { return object.GetTransform().graphicsScale; }

  GalePhysics::SphereCollider& sphere = *holder.Get<GalePhysics::SphereCollider>();

 private:
  std::set<std::uint32_t> known_;
};

}  // namespace

// The first volley leaves to the left, as the sides' flag has it; gaps between volleys are not counted from their
// shots.
TEST_F(HazardTest, AShipFiresThreeGunsAVolleyFromEitherSideInTurn) {
  BroadSide::ResetSide();
  Carry<BroadSide>();
  std::vector<std::pair<int, Vec3>> shots;
  while (frame < 2500 && shots.size() < 12) {
    Run(1);
    for (GameObject* ball : NewOnes("cannonball")) shots.emplace_back(frame, PositionOf(*ball));
  }
  ASSERT_EQ(shots.size(), 12u);
  for (std::size_t i = 0; i < shots.size(); ++i) {
    const float side = i / 3 % 2 == 0 ? -1.0f : 1.0f;
    const float slot[] = {0.0f, 3.0f, -3.0f};
    EXPECT_LT(Length(shots[i].second - Vec3{side * 1.5425f, side * slot[i % 3], 0.0f}), 1e-3f) << i;
  }
  for (std::size_t i = 3; i < shots.size(); i += 3) EXPECT_GE(shots[i].first - shots[i - 3].first, 353) << i;
  EXPECT_LE(shots[0].first, 2) << "a new ship has been ready for three seconds";
}

// What a new game has marked dead is updated once more, beside what the new game made.
TEST_F(HazardTest, AShipWithoutBallsOnlySaysSoAndADeadOneFiresNoMoreThanADeadFountain) {
  std::filesystem::rename("cannonball", "kept");
  Carry<BroadSide>();
  EXPECT_FALSE(FiresIn(2));
  EXPECT_GT(Count(world.text(), "CAN'T FIND YO LEVEL"), 0);
  std::filesystem::rename("kept", "cannonball");
  Carry<BroadSide>();
  Carry<Fountain>();
  TurnFountainsOn();
  Update(1);
  NewOnes("cannonball");
  holder.alive = false;
  Time().elapsedTime += 1.0f;
  Update(1);
  EXPECT_TRUE(NewOnes("cannonball").empty());
}

TEST_F(HazardTest, AFountainEruptsUpwardsForItsBurstWhenTriggeredAndTurnedOn) {
  PositionOf(holder) = {2.0f, -3.0f, 0.0f};
  auto& fountain = Carry<Fountain>();
  EXPECT_FALSE(FiresIn(60)) << "nobody has turned it on";
  TurnFountainsOn();
  std::size_t shots = 0;
  for (int i = 0; i < 178; ++i) {
    Run(1);
    for (GameObject* ball : NewOnes("cannonball")) {
      const Vec3& velocity = BodyOf(*ball).velocity;
      EXPECT_NEAR(Length(velocity), 3.0f, 1e-4f);
      EXPECT_GE(velocity.y, 3.0f * std::sin(kPi / 3.0f) - 1e-4f);
      const Vec3 muzzle = PositionOf(*ball) - velocity * (5.0f * kStep);
      EXPECT_NEAR(Length(muzzle - PositionOf(holder)), 0.1f, 1e-3f);
      ++shots;
    }
  }
  EXPECT_GT(shots, 9u);
  EXPECT_EQ(FramesOf("sound 18").size(), shots);
  EXPECT_FALSE(FiresIn(100)) << "the burst is over";
  fountain.Trigger();
  EXPECT_TRUE(FiresIn(30));
  const Fountain another;
  EXPECT_FALSE(FiresIn(30)) << "making one turns all off";
}

// A freeze of the game's clock may begin while the thing is out of shape: it must not drift away for good.
TEST_F(HazardTest, ASquishyThingBulgesOnceAndComesBackEvenThroughAFreeze) {
  auto& squishy = Carry<Squishy>();
  Vec3& scale = holder.GetTransform().graphicsScale;
  const auto expectScale = [&](float x, float y) { EXPECT_LT(Length(scale - Vec3{x, y, 0.0f}), 1e-4f) << scale.x; };
  scale = {2.0f, 3.0f, 0.0f};
  Hit(holder, holder);
  Run(18);
  expectScale(2.18f, 2.82f);
  Hit(holder, holder);  // too early
  for (int i = 0; i < 147; ++i) squishy.Update(0.0f);
  expectScale(2.18f, 2.82f);
  Run(60);
  expectScale(2.0f, 3.0f);
  EXPECT_EQ(squishy.savedScale, (Vec3{2.0f, 3.0f, 0.0f}));
}

// A point distance of 0: whoever overlaps it is drawn to it, and that is all.
TEST_F(HazardTest, AWhirlpoolGrowsAndOnlyPulls) {
  auto& whirlpool = Carry<Vortex>();
  whirlpool.pointDistance = 0.0f;
  whirlpool.pullingConstant = 0.004f;
  GameObject& player = world.AddSphere("Player1", {0.0f, 0.5f, 0.0f});
  Overlap(player);
  EXPECT_EQ(BodyOf(player).forceTotal, (Vec3{0.0f, -0.004f, 0.0f}));
  PositionOf(player) = {};
  Overlap(player);
  EXPECT_EQ(ScaleOf(player), (Vec3{1.0f, 1.0f, 1.0f}));
  EXPECT_FALSE(player.Get<GalePhysics::SphereCollider>()->ghost);
  for (int i = 0; i < 200; ++i) whirlpool.Update(0.01f);
  EXPECT_NEAR(sphere.radius, 2.0f, 1e-4f);
  EXPECT_EQ(sphere.broadPhaseSize, sphere.radius);
  EXPECT_NEAR(ScaleOf(holder).x, 2.0f, 1e-4f);
}

TEST_F(HazardTest, AnExitSwallowsPrizesAndPlayersUntilTheLastIsGone) {
  Carry<Vortex>();
  GameObject& prize = world.AddSphere("crate", {});
  prize.Insert(std::make_unique<GivePoints>());
  GameObject& thing = world.AddSphere("thing", {});
  for (GameObject* object : {&prize, &thing}) Overlap(*object);
  EXPECT_FALSE(prize.alive);
  EXPECT_TRUE(thing.alive);
  for (const char* name : {"Player1", "Player2", "Player3", "Player4"}) {
    EXPECT_TRUE(holder.alive);
    GameObject& player = world.AddSphere(name, {0.2f, 0.0f, 0.0f});
    Overlap(player, 1300);
    EXPECT_LT(Length(ScaleOf(player)), 0.0032f);
    EXPECT_TRUE(player.Get<GalePhysics::SphereCollider>()->ghost);
  }
  EXPECT_FALSE(holder.alive);
}

TEST_F(HazardTest, AWayInBringsPlayersBackToTheirPlaces) {
  Carry<Vortex>().isExit = false;
  GameObject& player = world.AddSphere("Player3", {0.2f, 0.0f, 0.0f});
  player.GetTransform().graphicsScale = {0.002f, 0.002f, 0.0f};
  Overlap(player);
  EXPECT_EQ(PositionOf(player), (Vec3{-1.5f, 0.0f, 0.0f}));
  EXPECT_FLOAT_EQ(ScaleOf(player).x, 0.01001f);
  EXPECT_EQ(BodyOf(player).forceTotal, (Vec3{0.001f, 0.0f, 0.0f})) << "pushed out of the middle";
  EXPECT_TRUE(player.Get<GalePhysics::SphereCollider>()->ghost);
  Overlap(player, 4700);
  EXPECT_FALSE(player.Get<GalePhysics::SphereCollider>()->ghost);
  EXPECT_NEAR(ScaleOf(player).x, 1.0f, 0.1f);
}

TEST_F(HazardTest, WhatComesInPassesWallsAndIsItselfInside) {
  Carry<OneWayIntoStage>();
  auto& body = BodyOf(holder);
  body.inverseMass = 0.5f;
  for (const float x : {20.0f, 14.01f, 13.99f, -13.99f, -14.01f, 0.0f}) {
    PositionOf(holder).x = x;
    Update(3);
    const bool inside = std::abs(x) < 14.0f;
    EXPECT_EQ(sphere.collisionGroup, inside ? 1u : 0u) << x;
    EXPECT_EQ(body.inverseMass, inside ? 0.5f : 0.0f) << x;
  }
}

TEST_F(HazardTest, APrisonPutsWhatGotOutBackInTheMiddle) {
  Carry<PrisonScript>();
  constexpr Vec3 kVelocity = {1.0f, 2.0f, 3.0f};
  const struct {
    const char* name;
    Vec3 place;
    Vec3 due;
    Vec3 velocity;
  } cases[] = {{"Player1", {16.5f, 3.0f, 0.0f}, {-2.0f, 0.0f, 0.0f}, {}},
               {"Player2", {-16.1f, 0.0f, 0.0f}, {2.0f, 0.0f, 0.0f}, {}},
               {"Player3", {0.0f, 11.1f, 0.0f}, {-4.0f, 0.0f, 0.0f}, {}},
               {"Player4", {0.0f, -11.1f, 0.0f}, {4.0f, 0.0f, 0.0f}, {}},
               {"Player5", {99.0f, 0.0f, 0.0f}, {}, {}},
               {"crate", {0.0f, 99.0f, 0.0f}, {}, {}},
               {"inside", {15.9f, -11.0f, 0.4f}, {15.9f, -11.0f, 0.0f}, kVelocity}};
  for (const auto& tried : cases) {
    holder.name = tried.name;
    PositionOf(holder) = tried.place;
    BodyOf(holder).velocity = kVelocity;
    Update(1);
    EXPECT_EQ(PositionOf(holder), tried.due) << tried.name;
    EXPECT_EQ(BodyOf(holder).velocity, tried.velocity) << tried.name;
  }
}

TEST_F(HazardTest, SandPuffsUnderFastPlayersOnly) {
  Carry("sandlogic");
  GameObject& player = world.AddSphere("Player3", {5.0f, 5.0f, 0.0f});
  GalePhysics::Contact contact = ContactOf(holder, player);
  contact.point = {1.0f, 2.0f, 0.0f};
  BodyOf(player).velocity.x = 1.9f;
  holder.OnContact(contact);
  EXPECT_EQ(CountObjects("sandpoof"), 0);
  BodyOf(player).velocity.x = 2.1f;
  holder.OnContact(contact);
  EXPECT_EQ(CountObjects("sandpoof"), 3);
  EXPECT_EQ(PositionOf(*Find("sandpoof")), contact.point);
  EXPECT_EQ(FramesOf("sound 38").size(), 1u);
  Run(40);
  EXPECT_EQ(CountObjects("sandpoof"), 3);
  Run(3);
  EXPECT_EQ(CountObjects("sandpoof"), 0);
}
