#include "match/character_controller.h"
#include "script_test.h"
#include "scripts/dizzy.h"
#include "scripts/follow.h"

namespace {

// A player that can be stunned, and a hazard.
class ReactionTest : public ScriptTest {
 public:
  ReactionTest() {
    world.WriteFile("stunstars", File("stars", Box("")));
    Carry("stunsonhit");
  }
  float Spin() { return BodyOf(player).angularVelocity.z; }

  GameObject& player = world.AddSphere("Player2", {3.0f, 1.0f, 0.0f});
  CharacterController& controller = Attach<CharacterController>(player);
  Dizzy& dizzy = Attach<Dizzy>(player);
};

// Counts what a boss would take.
struct BossStandIn final : Script {
  void OnContact(const GalePhysics::Contact&) override { ++hits; }
  const char* GetName() const override { return "bosshealth"; }
  int hits = 0;
};

}  // namespace

TEST_F(ReactionTest, AStunTakesControlForASecondAndSpinsTheOtherWayEachTime) {
  Hit(holder, player);
  EXPECT_TRUE(controller.stunned);
  EXPECT_EQ(Spin(), 6.0f);
  Time().elapsedTime = 0.5f;
  Hit(holder, player);  // starts the second anew
  EXPECT_EQ(Spin(), -6.0f);
  Time().elapsedTime = 1.5f;
  dizzy.Update(0.0f);
  EXPECT_TRUE(controller.stunned) << "not before the time is over";
  Time().elapsedTime = 1.51f;
  dizzy.Update(0.0f);
  EXPECT_FALSE(controller.stunned || dizzy.IsStunned());
  dizzy.Stun();
  controller.stunned = false;  // somebody else gives control back
  EXPECT_TRUE(dizzy.IsStunned());
}

// Neither a player without a Dizzy nor one without an archetype of stars may be a crash.
TEST_F(ReactionTest, AHazardStunsPlayersOnlyByTouchOrOverlapWhileItLives) {
  std::filesystem::remove("stunstars");
  player.name = "P7";
  Hit(holder, player);
  EXPECT_FALSE(controller.stunned) << "no player's name";
  player.name = "P5";
  holder.OnCollision({&holder, &player});
  EXPECT_TRUE(controller.stunned);
  controller.stunned = false;
  holder.alive = false;
  Hit(holder, player);
  EXPECT_FALSE(controller.stunned) << "a dead hazard";
  holder.alive = true;
  Hit(holder, world.AddSphere("Player3", {}));
}

TEST_F(ReactionTest, WhatFollowsPassesHitsOnToABossAndDiesWithItsLeader) {
  const auto& health = Attach<BossStandIn>(player);
  GameObject& part = world.AddSphere("part", {});
  Attach<Follow>(part, player.id, Vec3{0.0f, 2.0f, 0.0f});
  dizzy.Stun();
  GameObject& stars = *Find("stars");
  for (GameObject* follower : {&part, &stars}) follower->Update(kStep);
  EXPECT_EQ(PositionOf(part), (Vec3{3.0f, 3.0f, 0.0f}));
  EXPECT_EQ(PositionOf(stars), PositionOf(player));
  Hit(part, holder);
  EXPECT_EQ(health.hits, 1);
  part.alive = false;
  Hit(part, holder);
  EXPECT_EQ(health.hits, 1) << "a dead part";
  player.alive = false;
  Objects().RemoveDeadObjects();
  stars.Update(kStep);
  EXPECT_FALSE(stars.alive);
}
