#include "match/episode_scene.h"
#include "match/player/character_controller.h"
#include "match/player/dizzy.h"
#include "match/whale/boss_health.h"
#include "scripts/props/follow.h"

namespace {

// A player that can be stunned, and a hazard.
class ReactionTest : public ScriptTest {
 public:
  ReactionTest() {
    world.WriteFile("stunstars", File("stars", Box("")));
    Carry("stunsonhit");
  }

  GameObject& player = world.AddSphere("Player2", {3.0f, 1.0f, 0.0f});
  CharacterController& controller = Attach<CharacterController>(player);
  Dizzy& dizzy = Attach<Dizzy>(player);
};

}  // namespace

TEST_F(ReactionTest, AStunTakesControlForASecondAndSpinsTheOtherWayEachTime) {
  for (const float spin : {6.0f, -6.0f}) {  // the second one starts the time anew
    Time().elapsedTime += 0.25f;
    Hit(holder, player);
    EXPECT_EQ(BodyOf(player).angularVelocity.z, spin);
    EXPECT_EQ(PositionOf(*FindAll("stars").back()), PositionOf(player)) << "at once, not after a frame";
  }
  for (const float time : {1.5f, 1.51f}) {
    Time().elapsedTime = time;
    dizzy.Update(0.0f);
    EXPECT_EQ(controller.stunned, time == 1.5f);
    EXPECT_EQ(dizzy.IsStunned(), time == 1.5f);
  }
  dizzy.Stun();
  controller.stunned = false;  // somebody else gives control back
  EXPECT_TRUE(dizzy.IsStunned());
}

// Neither a player without a Dizzy nor one without an archetype of stars may be a crash.
TEST_F(ReactionTest, AHazardStunsPlayersOnlyByTouchOrOverlapWhileItLives) {
  std::filesystem::remove("stunstars");
  const auto stuns = [&](const char* name, bool alive) {
    controller.stunned = false;
    player.name = name;
    holder.alive = alive;
    Hit(holder, player);
    return controller.stunned;
  };
  EXPECT_TRUE(stuns("P5", true));
  EXPECT_FALSE(stuns("P7", true)) << "no player's name";
  EXPECT_FALSE(stuns("P5", false)) << "a dead hazard";
  holder.alive = true;
  holder.OnCollision({&holder, &player});
  EXPECT_TRUE(controller.stunned);
  Hit(holder, world.AddSphere("Player3", {}));
}

TEST_F(ReactionTest, WhatFollowsPassesHitsOnToABossAndDiesWithItsLeader) {
  const auto& health = Attach<BossHealth>(player);
  GameObject& part = world.AddSphere("part", {});
  Attach<Follow>(part, player.id, Vec3{0.0f, 2.0f, 0.0f});
  dizzy.Stun();
  GameObject& stars = *Find("stars");
  for (GameObject* follower : {&part, &stars}) follower->Update(kStep);
  EXPECT_EQ(PositionOf(part), (Vec3{3.0f, 3.0f, 0.0f}));
  EXPECT_EQ(PositionOf(stars), PositionOf(player));
  for (const bool alive : {true, false}) {
    part.alive = alive;
    Hit(part, player, 5.0f);
    EXPECT_EQ(health.health, 19) << "a dead part passes on no more";
  }
  player.alive = false;
  Objects().RemoveDeadObjects();
  stars.Update(kStep);
  EXPECT_FALSE(stars.alive);
}
