
#include "episode_scene.h"
#include "graphics/sprite_text.h"
#include "match/score/give_points.h"
#include "match/score/point_earner.h"
#include "match/score/ranking.h"
#include "match/score/score_displays.h"
#include "physics/generator_host.h"
#include "physics/wobbly_puller.h"
#include "scripts/props/death_timer.h"

namespace {

constexpr int kBubbleLife = 471;  // frames of 4 seconds

class ScoringTest : public PlayersTest {
 public:
  ScoringTest() { Run(1); }

  static const std::string& TextOn(const char* display) { return Find(display)->Get<SpriteText>()->text; }
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
TEST_F(ScoringTest, AnAwardFliesToTheDisplayInBubblesOfOneAndTwo) {
  AwardPoints(1, 25);
  const auto bubbles = static_cast<std::size_t>(CountObjects("APoint"));
  EXPECT_TRUE(bubbles >= 13 && bubbles < 24) << bubbles;
  for (GameObject* bubble : FindAll("APoint"))
    EXPECT_NEAR(Length(PositionOf(*bubble) - PositionOf(Player(1))), 1.0f, 1e-5f);
  Run(kBubbleLife);
  EXPECT_EQ(CountObjects("APoint"), 0);
  EXPECT_EQ(TextOn("ScoreText2"), "White Score: 25");
  EXPECT_EQ(FramesOf("points Player2 1").size() + FramesOf("points Player2 2").size(), bubbles);
  EXPECT_EQ(FramesOf("sound 24").size(), bubbles);
}

// Half a second of pop and rest near the player, then the pull: a bubble beside its display is there at once. The
// display swells by a tenth and is back after a tenth of a second; its third axis goes with the first update.
TEST_F(ScoringTest, ABubblePopsRestsAndIsPulledToItsDisplayWhichSwells) {
  GameObject& display = *Find("ScoreText");
  const Vec3& scale = display.GetTransform().graphicsScale;
  EXPECT_EQ(scale, (Vec3{0.01f, 0.01f, 0.0f}));
  AwardPoints(0, 1, {1.0f, -3.0f, 0.0f});
  GameObject& bubble = *Find("APoint");
  EXPECT_NEAR(Length(PositionOf(bubble) - Vec3{1.0f, -3.0f, 0.0f}), 1.0f, 1e-5f);
  Run(20);
  EXPECT_NEAR(Length(BodyOf(bubble).velocity), 1.0f, 0.03f);
  Run(30);
  EXPECT_EQ(Length(BodyOf(bubble).velocity), 0.0f);
  Run(12);
  ASSERT_EQ(BodyOf(bubble).generators.size(), 1u);
  EXPECT_EQ(BodyOf(bubble).generators[0], GetPlayerPuller(0));
  PositionOf(bubble) = PositionOf(display) + Vec3{0.3f, 0.0f, 0.0f};
  for (const auto& [frames, size] : {std::pair{2, 1.1f - 0.0085f}, {11, 1.0f}}) {
    Run(frames);
    EXPECT_EQ(TextOn("ScoreText"), "Red Score: 1");
    EXPECT_NEAR(scale.y, 0.01f * size, 1e-6f);
  }
}

TEST_F(ScoringTest, NobodyWithoutADisplayOrAPointIsAwarded) {
  Find("ScoreText3")->alive = false;
  Run(1);
  for (const auto& [player, points] : {std::pair{0, 0}, {0, -5}, {4, 1}, {2, 3}}) AwardPoints(player, points);
  EXPECT_EQ(CountObjects("APoint"), 0);
  std::string order;
  for (const Rank& rank : RankPlayers()) order += std::to_string(rank.player);
  EXPECT_EQ(order, "0132") << "equal scores keep the players' order";
  EXPECT_EQ(RankPlayers()[3].points, kNoScore);
}

// What is on its way when a match starts over belongs to the old displays.
TEST_F(ScoringTest, ANewGameStartsAtNothingWhateverStillFlies) {
  Start(Segments({}), Objectives({}));
  Run(1);
  AwardPoints(3, 10);
  Run(30);
  const std::size_t pullers = GalePhysics::CountGenerators();
  NewGame();
  Run(kBubbleLife);
  EXPECT_EQ(TextOn("ScoreText4"), "Yellow Score: 0");
  EXPECT_TRUE(FramesOf("points Player4 1").empty() && FramesOf("points Player4 2").empty());
  EXPECT_EQ(GalePhysics::CountGenerators(), pullers + 4) << "each match brings four, and the host keeps all";
}

// The first hit is too slow, and before the last the chest is broken. What needs no hits never breaks.
TEST_F(ScoringTest, AChestPaysOneAHitAndItsPointsWhenItBreaks) {
  GameObject& chest = AddPrize(8, 3, true);
  int player = 0;
  for (const auto& [speed, paid] : {std::pair{1.9f, 0}, {3.0f, 1}, {3.0f, 2}, {3.0f, 10}, {3.0f, 10}}) {
    Hit(chest, Player(player++ % 4), speed);
    EXPECT_EQ(Awarded(), paid) << player;
  }
  EXPECT_TRUE(IsGhost(chest));
  for (const char* sound : {"sound 34", "sound 35", "sound 36"}) EXPECT_EQ(FramesOf(sound).size(), 1u) << sound;
  GameObject& endless = AddPrize(2, 0, false);
  for (int i = 0; i < 3; ++i) Hit(endless, Player(0), 3.0f);
  EXPECT_EQ(Awarded(), 16);
  EXPECT_FALSE(endless.Get<GivePoints>()->IsBroken());
}

// Broken things leave in some direction at speed 10 and are gone 3 seconds later; a DeathTimer breaks, too, and its
// asking again in every frame does not put the end off.
TEST_F(ScoringTest, WhatBreaksSpinsAway) {
  GameObject& thing = AddPrize(1, 2, false);
  Attach<DeathTimer>(thing, 1.0f);
  Run(118);
  EXPECT_TRUE(thing.alive && thing.Get<GivePoints>()->IsBroken());
  Run(1);
  EXPECT_NEAR(Length(BodyOf(thing).velocity), 10.0f, 1e-4f);
  EXPECT_EQ(BodyOf(thing).angularVelocity.z, 10.0f);
  for (const int frames : {350, 5}) {
    Run(frames);
    EXPECT_EQ(CountObjects("prize"), frames == 350 ? 1 : 0);
  }
}

TEST_F(ScoringTest, PrizesOutOfReasonAreMovedIntoIt) {
  auto& prize = *AddPrize(1, 1, false).Get<GivePoints>();
  ReadValues(prize, "PointsGiven: 1000000000\nHits To Break: -2\nIs Treasure Chest: true\n");
  EXPECT_EQ(prize.pointsGiven, GivePoints::kMostPoints);
  EXPECT_EQ(prize.hitsToBreak, 0);
  EXPECT_TRUE(prize.chest);
  EXPECT_EQ(Count(world.text(), "values: line 2: PointsGiven 1000000000, taken as 100"), 1) << world.text();
}
