#include "match/scoring.h"

#include <gtest/gtest.h>

#include "core/game_time.h"
#include "core/script_box.h"
#include "episode_scene.h"
#include "graphics/sprite_text.h"
#include "match/character_controller.h"
#include "match/give_points.h"
#include "match/score_script.h"
#include "physics/generator_host.h"
#include "physics/sphere_collider.h"
#include "physics/wobbly_puller.h"
#include "scripts/death_timer.h"

namespace {

constexpr int kBubbleLife = 471;  // frames of 4 seconds

class ScoringScene : public EpisodeScene {
 public:
  ScoringScene() {
    SetupMatch();
    Run(1);
  }
  static int PointsOf(int player) {
    for (const Rank& rank : RankPlayers())
      if (rank.player == player) return rank.points;
    return 0;
  }
  // A player touches the thing: its own notice, the thing first.
  static void Hit(GameObject& thing, int player, float speed, float thingSpeed = 0.0f) {
    GameObject& hitter = *GetPlayerObject(player);
    BodyOf(hitter).velocity = {speed, 0.0f, 0.0f};
    BodyOf(thing).velocity = {thingSpeed, 0.0f, 0.0f};
    GalePhysics::Contact contact;
    contact.first = &BodyOf(thing);
    contact.second = &BodyOf(hitter);
    contact.firstOwner = &thing;
    contact.secondOwner = &hitter;
    thing.OnContact(contact);
    BodyOf(hitter).velocity = {};
  }
  GameObject& AddPrize(int points, int hits, bool chest) {
    GameObject& thing = world.AddSphere("prize", {6.0f, 6.0f, 0.0f}, {.inverseMass = 0.0f, .locked = false});
    auto& prize = thing.Insert(std::make_unique<GivePoints>());
    prize.pointsGiven = points;
    prize.hitsToBreak = hits;
    prize.chest = chest;
    return thing;
  }
};

}  // namespace

// Whatever the split into bubbles, all of an award arrives, in ones and twos, before the bubbles' time is over.
TEST(Scoring, AnAwardFliesToTheDisplayInBubblesOfOneAndTwo) {
  ScoringScene scene;
  AwardPoints(1, 25);
  const int bubbles = ScoringScene::CountObjects("APoint");
  EXPECT_GE(bubbles, 13);
  EXPECT_LT(bubbles, 25) << "no two in 24 draws";
  for (const auto& object : Objects().GetObjects())
    if (object->name == "APoint") {
      const Vec3 way = object->GetTransform().position - GetPlayerObject(1)->GetTransform().position;
      EXPECT_NEAR(Length(way), 1.0f, 1e-5f);
    }
  scene.Run(kBubbleLife);
  EXPECT_EQ(ScoringScene::CountObjects("APoint"), 0);
  EXPECT_EQ(ScoringScene::PointsOf(1), 25);
  EXPECT_EQ(ScoringScene::Find("ScoreText2")->Get<SpriteText>()->text, "White Score: 25");
  EXPECT_EQ(scene.FramesOf("points Player2 1").size() + scene.FramesOf("points Player2 2").size(),
            static_cast<std::size_t>(bubbles));
  EXPECT_EQ(scene.FramesOf("sound 24").size(), static_cast<std::size_t>(bubbles));
}

// Half a second of pop and rest near the player, then the pull: a bubble beside its display is there at once.
TEST(Scoring, ABubblePopsRestsAndIsPulled) {
  ScoringScene scene;
  AwardPoints(0, 1, {1.0f, -3.0f, 0.0f});
  GameObject* bubble = ScoringScene::Find("APoint");
  const Vec3 start = bubble->GetTransform().position;
  EXPECT_NEAR(Length(start - Vec3{1.0f, -3.0f, 0.0f}), 1.0f, 1e-5f);
  scene.Run(20);
  EXPECT_NEAR(Length(BodyOf(*bubble).velocity), 1.0f, 0.03f);
  scene.Run(30);
  EXPECT_EQ(Length(BodyOf(*bubble).velocity), 0.0f);
  scene.Run(12);
  ASSERT_EQ(BodyOf(*bubble).generators.size(), 1u);
  EXPECT_EQ(BodyOf(*bubble).generators[0], GetPlayerPuller(0));
  bubble->GetTransform().position = ScoringScene::Find("ScoreText")->GetTransform().position + Vec3{0.3f, 0.0f, 0.0f};
  scene.Run(1);
  EXPECT_EQ(ScoringScene::PointsOf(0), 1);
}

TEST(Scoring, NobodyWithoutADisplayOrAPointIsAwarded) {
  ScoringScene scene;
  AwardPoints(0, 0);
  AwardPoints(0, -5);
  AwardPoints(4, 1);
  ScoringScene::Find("ScoreText3")->alive = false;
  scene.Run(1);
  AwardPoints(2, 3);
  EXPECT_EQ(ScoringScene::CountObjects("APoint"), 0);
  const auto ranks = RankPlayers();
  EXPECT_EQ(ranks[0].player, 0) << "equal scores keep the players' order";
  EXPECT_EQ(ranks[1].player, 1);
  EXPECT_EQ(ranks[3].player, 2);
  EXPECT_EQ(ranks[3].points, kNoScore);
}

// A display swells by a tenth and is back after a tenth of a second; its third axis goes with the first update.
TEST(Scoring, TheDisplaySwells) {
  ScoringScene scene;
  GameObject& display = *ScoringScene::Find("ScoreText");
  EXPECT_EQ(display.GetTransform().graphicsScale, (Vec3{0.01f, 0.01f, 0.0f}));
  EXPECT_EQ(display.Get<SpriteText>()->text, "Red Score: 0");
  const SentPoints sent = {2, 0};
  display.HandleEvent(Event(kSentPoints, &sent));
  scene.Run(1);
  EXPECT_NEAR(display.GetTransform().graphicsScale.x, 0.01f * (1.1f - 0.0085f), 1e-6f);
  scene.Run(11);
  EXPECT_FLOAT_EQ(display.GetTransform().graphicsScale.y, 0.01f);
}

// What is on its way when a match starts over belongs to the old displays.
TEST(Scoring, ANewGameStartsAtNothingWhateverStillFlies) {
  ScoringScene scene;
  scene.Start(EpisodeScene::Segments({}), EpisodeScene::Objectives({}));
  scene.Run(1);
  AwardPoints(3, 10);
  scene.Run(30);
  const std::size_t pullers = GalePhysics::CountGenerators();
  NewGame();
  scene.Run(kBubbleLife);
  EXPECT_EQ(ScoringScene::PointsOf(3), 0);
  EXPECT_TRUE(scene.FramesOf("points Player4 1").empty() && scene.FramesOf("points Player4 2").empty());
  EXPECT_EQ(GalePhysics::CountGenerators(), pullers + 4) << "each match brings four, and the host keeps all";
}

TEST(GivePoints, AChestPaysOneAHitAndItsPointsWhenItBreaks) {
  ScoringScene scene;
  GameObject& thing = scene.AddPrize(8, 3, true);
  auto paid = [before = GetPointsAwarded()]() mutable {
    return GetPointsAwarded() - std::exchange(before, GetPointsAwarded());
  };
  paid();
  scene.Hit(thing, 0, 1.9f);
  EXPECT_EQ(paid(), 0) << "too slow";
  scene.Hit(thing, 0, 3.0f);
  EXPECT_EQ(paid(), 1);
  scene.Hit(thing, 1, 3.0f);
  EXPECT_EQ(paid(), 1);
  scene.Hit(thing, 2, 3.0f);
  EXPECT_EQ(paid(), 8);
  EXPECT_TRUE(thing.Get<GalePhysics::SphereCollider>()->ghost);
  scene.Hit(thing, 3, 3.0f);
  EXPECT_EQ(paid(), 0) << "broken";
  EXPECT_EQ(scene.FramesOf("sound 35").size(), 1u);
  EXPECT_EQ(scene.FramesOf("sound 36").size(), 1u);
  EXPECT_EQ(scene.FramesOf("sound 34").size(), 1u);

  GameObject& endless = scene.AddPrize(2, 0, false);
  for (int i = 0; i < 3; ++i) scene.Hit(endless, 0, 3.0f);
  EXPECT_EQ(paid(), 6);
  EXPECT_FALSE(endless.Get<GivePoints>()->IsBroken());
}

// Broken things leave in some direction at speed 10 and are gone 3 seconds later; a DeathTimer breaks, too, and its
// asking again in every frame does not put the end off.
TEST(GivePoints, WhatBreaksSpinsAway) {
  ScoringScene scene;
  GameObject& thing = scene.AddPrize(1, 2, false);
  const auto id = thing.id;
  thing.Insert(std::make_unique<ScriptBox>()).AddScript(std::make_unique<DeathTimer>(1.0f));
  scene.Run(118);
  EXPECT_TRUE(thing.alive && thing.Get<GivePoints>()->IsBroken());
  scene.Run(1);
  EXPECT_NEAR(Length(BodyOf(thing).velocity), 10.0f, 1e-4f);
  EXPECT_EQ(BodyOf(thing).angularVelocity.z, 10.0f);
  scene.Run(350);
  EXPECT_NE(Objects().GetObject(id), nullptr);
  scene.Run(5);
  EXPECT_EQ(Objects().GetObject(id), nullptr);
}

TEST(GivePoints, NumbersOutOfReasonAreMovedIntoIt) {
  ScoringScene scene;
  scene.world.WriteFile("prize", EpisodeScene::File("prize",
                                                    "\t\tComponent: \"GivePoints\" {\n"
                                                    "\t\t\tPointsGiven: 1000000000\n"
                                                    "\t\t\tHits To Break: -2\n"
                                                    "\t\t\tIs Treasure Chest: true\n\t\t}\n"));
  const auto* prize = Objects().LoadLevel("prize").at(0)->Get<GivePoints>();
  EXPECT_EQ(prize->pointsGiven, GivePoints::kMostPoints);
  EXPECT_EQ(prize->hitsToBreak, 0);
  EXPECT_TRUE(prize->chest);
  EXPECT_NE(scene.world.text().find("prize: line 6: PointsGiven 1000000000, taken as 100"), std::string::npos)
      << scene.world.text();
}
