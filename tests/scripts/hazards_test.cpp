// What things of a stage do by themselves and to those who touch them.
#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "match/episode_scene.h"
#include "match/score/give_points.h"
#include "scripts/animators/squishy.h"
#include "scripts/hazards/broad_side.h"
#include "scripts/hazards/fountain.h"
#include "scripts/hazards/vortex.h"
#include "scripts/spawners/spawns_objects.h"

namespace {

class HazardTest : public ScriptTest {
 public:
  // The balls fired since the last call, which are gone then.
  static std::vector<GameObject*> TakeBalls() {
    const std::vector<GameObject*> balls = FindAll("cannonball");
    for (GameObject* ball : balls) ball->alive = false;
    return balls;
  }
  bool FiresIn(int frames) {
    Run(frames);
    return !TakeBalls().empty();
  }
  bool IsFiringDead() {
    holder.alive = false;
    Time().elapsedTime += 1.0f;
    Update(1);
    holder.alive = true;
    return !TakeBalls().empty();
  }
  void Overlap(GameObject& other, int times = 1) {
    for (int i = 0; i < times; ++i) holder.OnCollision({&holder, &other});
  }
  static const Vec3& ScaleOf(GameObject& object) { return object.GetTransform().graphicsScale; }

  GalePhysics::SphereCollider& sphere = *holder.Get<GalePhysics::SphereCollider>();
};

}  // namespace

// The first volley leaves to the left, as the sides' flag has it; gaps between volleys are not counted from their
// shots. What a new game has marked dead is updated once more, beside what the new game made.
TEST_F(HazardTest, AShipFiresThreeGunsAVolleyFromEitherSideInTurnUntilItIsDead) {
  constexpr float kSlots[] = {0.0f, 3.0f, -3.0f};
  BroadSide::ResetSide();
  Carry<BroadSide>();
  std::vector<int> shots;
  while (frame < 2500 && shots.size() < 12) {
    Run(1);
    for (GameObject* ball : TakeBalls()) {
      const std::size_t shot = shots.size();
      const float side = shot / 3 % 2 == 0 ? -1.0f : 1.0f;
      EXPECT_LT(Length(PositionOf(*ball) - Vec3{side * 1.5425f, side * kSlots[shot % 3], 0.0f}), 1e-3f) << shot;
      shots.push_back(frame);
    }
  }
  ASSERT_EQ(shots.size(), 12u);
  EXPECT_LE(shots[0], 2) << "a new ship has been ready for three seconds";
  for (const std::size_t i : {3u, 6u, 9u}) EXPECT_GE(shots[i] - shots[i - 3], 353) << i;
  Carry<BroadSide>();
  EXPECT_FALSE(IsFiringDead());
}

TEST_F(HazardTest, AShipWithoutBallsOnlySaysSo) {
  std::filesystem::remove("cannonball");
  Carry<BroadSide>();
  EXPECT_FALSE(FiresIn(2));
  EXPECT_GT(Count(world.text(), "CAN'T FIND YO LEVEL"), 0);
}

TEST_F(HazardTest, AFountainEruptsUpwardsForItsBurstWhenTriggeredAndTurnedOn) {
  PositionOf(holder) = {2.0f, -3.0f, 0.0f};
  auto& fountain = Carry<Fountain>();
  EXPECT_FALSE(FiresIn(60)) << "nobody has turned it on";
  TurnFountainsOn();
  std::size_t shots = 0;
  for (int i = 0; i < 178; ++i) {
    Run(1);
    for (GameObject* ball : TakeBalls()) {
      EXPECT_NEAR(Length(BodyOf(*ball).velocity), 3.0f, 1e-4f);
      EXPECT_GE(BodyOf(*ball).velocity.y, 3.0f * std::sin(kPi / 3.0f) - 1e-4f);
      EXPECT_GT(PositionOf(*ball).y, PositionOf(holder).y);
      ++shots;
    }
  }
  EXPECT_GT(shots, 9u);
  EXPECT_EQ(FramesOf("sound 18").size(), shots);
  EXPECT_FALSE(FiresIn(100)) << "the burst is over";
  fountain.Trigger();
  EXPECT_TRUE(FiresIn(30));
  EXPECT_FALSE(IsFiringDead());
  const Fountain another;
  EXPECT_FALSE(FiresIn(30)) << "making one turns all off";
}

// A file, and what is undone, keeps what is the owner's own.
TEST_F(HazardTest, WhatScriptsBorrowOfTheirOwnerIsNeverSaved) {
  auto& sprite = holder.Insert(std::make_unique<Sprite>());
  PositionOf(holder).x = 20.0f;
  holder.GetTransform().Rebuild();
  BodyOf(holder).inverseMass = 0.5f;
  sphere.collisionGroup = 7;
  for (const char* name : {"onewayintostage", "barnaclelogic", "spawner", "color-changer", "squishy"}) Carry(name);
  const std::string own = Document({&holder});
  for (const int updates : {1, 15}) {
    Hit(holder, world.AddSphere("Player3", {}), 5.0f);
    Update(updates);
    EXPECT_EQ(Document({&holder}), own);
    EXPECT_EQ(BodyOf(holder).inverseMass, 0.0f);
    EXPECT_EQ(sphere.collisionGroup, 0u);
    EXPECT_FALSE(sprite.visible || sprite.r == 1.0f);
    EXPECT_NE(ScaleOf(holder).x, ScaleOf(holder).y);
    EXPECT_TRUE(sphere.ghost);
  }
}

// A freeze of the game's clock may begin while the thing is out of shape: it must not drift away for good.
TEST_F(HazardTest, ASquishyThingBulgesOnceAndComesBackEvenThroughAFreeze) {
  auto& squishy = Carry<Squishy>();
  Vec3& scale = holder.GetTransform().graphicsScale;
  const auto expectScale = [&](float x, float y) { EXPECT_LT(Length(scale - Vec3{x, y, 0.0f}), 1e-4f) << scale.x; };
  scale = {2.0f, 3.0f, 0.0f};
  Hit(holder, holder);
  Run(18);
  Hit(holder, holder);  // too early
  for (int i = 0; i < 147; ++i) squishy.Update(0.0f);
  expectScale(2.18f, 2.82f);
  Run(60);
  expectScale(2.0f, 3.0f);
  for (const float late : {4000.0f, 16000.0f, 65000.0f}) {  // where the clock's steps are no longer even
    Time().elapsedTime = late;
    Hit(holder, holder);
    Run(80);
    expectScale(2.0f, 3.0f);
  }
}

// At a point distance of 0 whoever overlaps it is drawn to it, and that is all.
TEST_F(HazardTest, AWhirlpoolGrowsAndPullsAndAnExitSwallowsPrizesAndPlayersUntilTheLastIsGone) {
  auto& whirlpool = Carry<Vortex>();
  whirlpool.Update(2.0f);
  for (const float size : {sphere.radius, sphere.broadPhaseSize, ScaleOf(holder).x}) EXPECT_EQ(size, 2.0f);
  const float exitDistance = std::exchange(whirlpool.pointDistance, 0.0f);
  whirlpool.pullingConstant = 0.004f;
  GameObject& prize = world.AddSphere("crate", {0.0f, 0.5f, 0.0f});
  prize.Insert(std::make_unique<GivePoints>());
  Overlap(prize);
  EXPECT_EQ(BodyOf(prize).forceTotal, (Vec3{0.0f, -0.004f, 0.0f}));
  EXPECT_TRUE(prize.alive);
  whirlpool.pointDistance = exitDistance;
  PositionOf(prize) = {};
  GameObject& thing = world.AddSphere("thing", {});
  for (GameObject* object : {&prize, &thing}) Overlap(*object);
  EXPECT_TRUE(thing.alive && !prize.alive);
  for (const char* name : {"Player1", "Player2", "Player3", "Player4"}) {
    EXPECT_TRUE(holder.alive);
    GameObject& player = world.AddSphere(name, {0.2f, 0.0f, 0.0f});
    Overlap(player, 1300);
    EXPECT_LT(Length(ScaleOf(player)), 0.0032f);
    EXPECT_TRUE(IsGhost(player));
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
  EXPECT_TRUE(IsGhost(player));
  Overlap(player, 4700);
  EXPECT_FALSE(IsGhost(player));
  EXPECT_NEAR(ScaleOf(player).x, 1.0f, 0.1f);
}

TEST_F(HazardTest, WhatComesInPassesWallsAndIsItselfInside) {
  Carry("onewayintostage");
  BodyOf(holder).inverseMass = 0.5f;
  for (const float x : {20.0f, 14.01f, 13.99f, -13.99f, -14.01f, 0.0f}) {
    PositionOf(holder).x = x;
    Update(3);
    const bool inside = std::abs(x) < 14.0f;
    EXPECT_EQ(sphere.collisionGroup, inside ? 1u : 0u) << x;
    EXPECT_EQ(BodyOf(holder).inverseMass, inside ? 0.5f : 0.0f) << x;
  }
}

// A velocity whose square is beyond the largest float has a direction all the same.
TEST_F(HazardTest, TheSpeedLimitKeepsTheDirectionOfAnySpeed) {
  Carry("VelocityCap");
  for (const float speed : {12.9f, 14.0f, 1e30f}) {
    BodyOf(holder).velocity = {0.6f * speed, -0.8f * speed, 0.0f};
    Update(1);
    const float due = std::min(speed, 13.0f);
    EXPECT_LT(Length(BodyOf(holder).velocity - Vec3{0.6f * due, -0.8f * due, 0.0f}), 1e-4f) << speed;
  }
}

TEST_F(HazardTest, APrisonPutsWhatGotOutBackInTheMiddleAtRest) {
  Carry("PrisonScript");
  constexpr Vec3 kVelocity = {1.0f, 2.0f, 3.0f};
  const auto expectPlace = [&](const char* name, const Vec3& from, const Vec3& due, const Vec3& velocity = {}) {
    holder.name = name;
    PositionOf(holder) = from;
    BodyOf(holder).velocity = kVelocity;
    Update(1);
    EXPECT_EQ(PositionOf(holder), due) << name;
    EXPECT_EQ(BodyOf(holder).velocity, velocity) << name;
  };
  expectPlace("Player1", {16.5f, 3.0f, 0.0f}, {-2.0f, 0.0f, 0.0f});
  expectPlace("Player2", {-16.1f, 0.0f, 0.0f}, {2.0f, 0.0f, 0.0f});
  expectPlace("Player3", {0.0f, 11.1f, 0.0f}, {-4.0f, 0.0f, 0.0f});
  expectPlace("Player4", {0.0f, -11.1f, 0.0f}, {4.0f, 0.0f, 0.0f});
  expectPlace("Player5", {99.0f, 0.0f, 0.0f}, {});
  expectPlace("crate", {0.0f, 99.0f, 0.0f}, {});
  expectPlace("inside", {15.9f, -11.0f, 0.4f}, {15.9f, -11.0f, 0.0f}, kVelocity);
}

TEST_F(HazardTest, SandPuffsUnderFastPlayersOnly) {
  Carry("sandlogic");
  GameObject& player = world.AddSphere("Player3", {5.0f, 5.0f, 0.0f});
  GalePhysics::Contact contact = ContactOf(holder, player);
  contact.point = {1.0f, 2.0f, 0.0f};
  for (const bool fast : {false, true}) {
    BodyOf(player).velocity.x = fast ? 2.1f : 1.9f;
    holder.OnContact(contact);
    EXPECT_EQ(CountObjects("sandpoof"), fast ? 3 : 0);
  }
  EXPECT_EQ(PositionOf(*Find("sandpoof")), contact.point);
  EXPECT_EQ(FramesOf("sound 38").size(), 1u);
  for (const auto& [frames, left] : {std::pair{40, 3}, {3, 0}}) {
    Run(frames);
    EXPECT_EQ(CountObjects("sandpoof"), left);
  }
}

// Intervals are real seconds, of 58.8 frames; what swims to the left looks there.
TEST_F(HazardTest, ASpawnerSendsCopiesOffAtItsRateAndWaitsForAMissingArchetype) {
  GameObject& pattern = world.AddSphere("fish", {}, {.damping = 0.9985f, .group = 0});
  world.WriteFile("fish", Document({&pattern}));
  pattern.alive = false;
  PositionOf(holder) = {21.0f, 1.0f, -0.2f};
  const Sprite& picture = holder.Insert(std::make_unique<Sprite>());
  auto& spawner = Carry<SpawnsObjects>();
  spawner.archetypeName = "kraken";
  spawner.spawnVelocity = {-1.5f, 0.0f, 0.0f};
  spawner.spawnRate = 1.0f;
  spawner.timeBeforeFirstSpawn = 1.0f;
  constexpr char kMissing[] = "the archetype \"kraken\" makes no object";
  for (const auto& [frames, tries] : {std::pair{58, 0}, {1, 1}}) {
    Run(frames);
    EXPECT_EQ(Count(world.text(), kMissing), tries);
  }
  EXPECT_FALSE(picture.visible);
  spawner.archetypeName = "fish";
  Run(58);
  EXPECT_EQ(CountObjects("fish"), 0);
  Run(1);
  ASSERT_EQ(CountObjects("fish"), 1);
  GameObject& fish = *Find("fish");
  const float damping = std::sqrt(0.9985f);
  EXPECT_FLOAT_EQ(BodyOf(fish).damping, damping);
  EXPECT_NEAR(BodyOf(fish).velocity.x, -1.5f * std::pow(damping, 15.0f), 1e-4f);
  EXPECT_EQ(fish.GetTransform().graphicsScale.x, -1.0f);
  EXPECT_EQ(PositionOf(fish).y, 1.0f) << "a range of no height";
  EXPECT_EQ(PositionOf(fish).z, -0.2f);
  spawner.yRange = 6.0f;
  Run(60 * 59);
  EXPECT_NEAR(CountObjects("fish"), 61, 1);
  std::set<float> heights;
  for (GameObject* one : FindAll("fish")) heights.insert(PositionOf(*one).y);
  EXPECT_GE(*heights.begin(), 1.0f - 6.0f);
  EXPECT_LE(*heights.rbegin(), 1.0f + 6.0f);
  EXPECT_GT(*heights.rbegin() - *heights.begin(), 8.0f) << "spread over the range";

  GameObject& undamped = world.AddSphere("crab", {}, {.damping = 1.0f, .group = 0});
  world.WriteFile("crab", Document({&undamped}));
  undamped.alive = false;
  spawner.archetypeName = "crab";
  Run(60);
  ASSERT_EQ(CountObjects("crab"), 1);
  GameObject& crab = *Find("crab");
  const float x = PositionOf(crab).x;
  Run(10);
  EXPECT_NEAR(PositionOf(crab).x, x - 10 * 0.06375f, 1e-4f);
  spawner.archetypeName = "fish";
  spawner.spawnVelocity = {1.0f, 0.0f, 0.0f};
  spawner.spawnRate = 0.0f;
  Run(100);
  EXPECT_GE(CountObjects("fish"), 100) << "no rate: one a frame";
  EXPECT_EQ(FindAll("fish").back()->GetTransform().graphicsScale.x, 1.0f);
}

// The bench throws for ever, and what it throws is gone after three seconds.
TEST_F(HazardTest, TheBenchThrowsWithoutEndAndWithoutPilingUp) {
  Carry("Spawner");
  Run(400);
  EXPECT_GE(CountObjects("thrown"), 13);
  Run(800);
  EXPECT_LE(CountObjects("thrown"), 15 * 3);
}
