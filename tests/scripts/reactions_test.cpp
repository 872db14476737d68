#include <gtest/gtest.h>

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "match/character_controller.h"
#include "scripts/dizzy.h"
#include "scripts/follow.h"
#include "test_world.h"

namespace {

constexpr char kStars[] =
    "{\n\t1: {\n\t\tName: stars\n\t\tCore: false\n\t\tComponent: \"ScriptBox\" {\n\t\t}\n\t}\n}\n";

// A player that can be stunned, and a hazard.
class ReactionScene {
 public:
  ReactionScene() {
    world.WriteFile("stunstars", kStars);
    auto& scripts = player.Insert(std::make_unique<ScriptBox>());
    controller = static_cast<CharacterController*>(scripts.AddScript("CharacterController"));
    dizzy = static_cast<Dizzy*>(scripts.AddScript("dizzy"));
    hazard.Insert(std::make_unique<ScriptBox>()).AddScript("stunsonhit");
  }
  void Touch(GameObject& self, GameObject& other) {
    GalePhysics::Contact contact;
    contact.first = &BodyOf(self);
    contact.second = &BodyOf(other);
    contact.firstOwner = &self;
    contact.secondOwner = &other;
    self.OnContact(contact);
  }
  float Spin() { return BodyOf(player).angularVelocity.z; }

  TestWorld world;
  GameObject& player = world.AddSphere("Player2", {3.0f, 1.0f, 0.0f});
  GameObject& hazard = world.AddSphere("hazard", {5.0f, 1.0f, 0.0f});
  CharacterController* controller = nullptr;
  Dizzy* dizzy = nullptr;
};

// Counts what a boss would take.
struct BossStandIn final : Script {
  void OnContact(const GalePhysics::Contact&) override { ++hits; }
  const char* GetName() const override { return "bosshealth"; }
  int hits = 0;
};

}  // namespace

TEST(Dizzy, TakesControlForASecondAndSpinsTheOtherWayEachTime) {
  ReactionScene scene;
  scene.Touch(scene.hazard, scene.player);
  EXPECT_TRUE(scene.controller->stunned);
  EXPECT_EQ(scene.Spin(), 6.0f);
  Time().elapsedTime = 0.5f;
  scene.Touch(scene.hazard, scene.player);  // starts the second anew
  EXPECT_EQ(scene.Spin(), -6.0f);
  Time().elapsedTime = 1.5f;
  scene.dizzy->Update(0.0f);
  EXPECT_TRUE(scene.controller->stunned) << "not before the time is over";
  Time().elapsedTime = 1.51f;
  scene.dizzy->Update(0.0f);
  EXPECT_FALSE(scene.controller->stunned);
  EXPECT_FALSE(scene.dizzy->IsStunned());
  scene.dizzy->Stun();
  scene.controller->stunned = false;  // somebody else gives control back
  EXPECT_TRUE(scene.dizzy->IsStunned());
}

TEST(Dizzy, ShowsStarsThatFollowThePlayerAndDieWithIt) {
  ReactionScene scene;
  scene.dizzy->Stun();
  GameObject* stars = Objects().FindObjectByName("stars");
  ASSERT_NE(stars, nullptr);
  PositionOf(scene.player) = {-4.0f, 2.0f, 0.0f};
  stars->Update(0.01f);
  EXPECT_EQ(PositionOf(*stars), (Vec3{-4.0f, 2.0f, 0.0f}));
  scene.player.alive = false;
  Objects().RemoveDeadObjects();
  stars->Update(0.01f);
  EXPECT_FALSE(stars->alive);
}

// Neither a player without a Dizzy nor one without an archetype of stars may be a crash.
TEST(StunsOnHit, StunsPlayersOnlyByTouchOrOverlapWhileItLives) {
  ReactionScene scene;
  scene.player.name = "P7";
  scene.Touch(scene.hazard, scene.player);
  EXPECT_FALSE(scene.controller->stunned) << "no player's name";
  scene.player.name = "P5";
  scene.hazard.OnCollision({&scene.hazard, &scene.player});
  EXPECT_TRUE(scene.controller->stunned);
  scene.controller->stunned = false;
  scene.hazard.alive = false;
  scene.Touch(scene.hazard, scene.player);
  EXPECT_FALSE(scene.controller->stunned) << "a dead hazard";
  scene.hazard.alive = true;
  scene.Touch(scene.hazard, scene.world.AddSphere("Player3", {}));
}

TEST(Follow, PassesHitsOnToTheBossItFollows) {
  ReactionScene scene;
  auto& boss = static_cast<BossStandIn&>(scene.world.Add("whale", {1.0f, 0.0f, 0.0f})
                                             .Insert(std::make_unique<ScriptBox>())
                                             .AddScript(std::make_unique<BossStandIn>()));
  GameObject& part = scene.world.AddSphere("part", {});
  auto& scripts = part.Insert(std::make_unique<ScriptBox>());
  scripts.AddScript(std::make_unique<Follow>(boss.owner->id, Vec3{0.0f, 2.0f, 0.0f}));
  part.Update(0.01f);
  EXPECT_EQ(PositionOf(part), (Vec3{1.0f, 2.0f, 0.0f}));
  scene.Touch(part, scene.player);
  EXPECT_EQ(boss.hits, 1);
  part.alive = false;
  scene.Touch(part, scene.player);
  EXPECT_EQ(boss.hits, 1) << "a dead part";
}
