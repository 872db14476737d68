#include "match/game_timer.h"

#include <gtest/gtest.h>

#include "core/script_box.h"
#include "episode_scene.h"
#include "graphics/sprite.h"
#include "match/segment_manager.h"

namespace {

constexpr float kGrey = 100.0f / 255.0f;

std::vector<const Sprite*> Wedges() {
  std::vector<const Sprite*> wedges;
  for (const auto& object : Objects().GetObjects()) {
    const Sprite* sprite = object->Get<Sprite>();
    if (object->alive && sprite != nullptr && sprite->texturePath == "PieChunk.png") wedges.push_back(sprite);
  }
  return wedges;
}

int CountGrey() {
  int grey = 0;
  for (const Sprite* wedge : Wedges()) grey += wedge->r == kGrey && wedge->g == kGrey && wedge->b == kGrey ? 1 : 0;
  return grey;
}

int Frames(float seconds) { return static_cast<int>(seconds / 0.0085f); }

}  // namespace

// 90 seconds: nine wedges of ten seconds, the first of which lies right of 12 o'clock and the red one left of it.
TEST(GameTimer, APieOfNineEndsTheMatch) {
  EpisodeScene scene;
  scene.Start(EpisodeScene::Segments({{"nothing", 60.0f}, {"nothing", 30.0f}}), EpisodeScene::Objectives({}));
  scene.Run(1);
  const auto wedges = Wedges();
  ASSERT_EQ(wedges.size(), 9u);
  EXPECT_EQ(wedges[0]->g, 0.0f);
  EXPECT_EQ(wedges[8]->g, 1.0f);
  const Transform& last = wedges[0]->owner->GetTransform();
  EXPECT_EQ(last.position, (Vec3{0.0f, 10.0f, 0.0f}));
  EXPECT_NEAR(last.orientation.k, std::sin(-0.34906587f / 2.0f), 1e-6f);
  EXPECT_TRUE(wedges[0]->owner->core);

  scene.Run(Frames(4.9f));
  EXPECT_EQ(CountGrey(), 0);
  scene.Run(Frames(0.8f));
  EXPECT_EQ(wedges[8]->r, kGrey) << "blinks in its last five seconds";
  scene.Run(Frames(0.5f));
  EXPECT_EQ(wedges[8]->r, 1.0f);
  scene.Run(Frames(30.0f) - scene.frame + 2);
  EXPECT_EQ(CountGrey(), 3);
  EXPECT_EQ(wedges[6]->r, kGrey);
  EXPECT_EQ(wedges[5]->r, 1.0f);

  const int end = Frames(90.0f) + 3;
  scene.Run(end - 20 - scene.frame);
  EXPECT_NE(EpisodeScene::Find("segmentmanager"), nullptr);
  scene.Run(40);
  EXPECT_EQ(EpisodeScene::Find("segmentmanager"), nullptr);
  EXPECT_NEAR(scene.FramesOf("screen finish").at(0), end, 3);
  EXPECT_EQ(scene.FramesOf("screen finish").size(), 1u);
  EXPECT_EQ(CountGrey(), 9) << "the pie stays, and the red one ends grey";
  ASSERT_EQ(scene.FramesOf("music 2").size(), 1u);
  EXPECT_NEAR(scene.FramesOf("screen finish")[0] - scene.FramesOf("music 2")[0], 15.0f / 0.0085f, 3);
}

// No episode, or one that lasts no time, gives no pie and no end; the clock starts when one is there.
TEST(GameTimer, WaitsForAnEpisode) {
  EpisodeScene scene;
  scene.Start(EpisodeScene::Segments({}), EpisodeScene::Objectives({}));
  scene.Run(50);
  EXPECT_TRUE(Wedges().empty());
  EXPECT_TRUE(scene.FramesOf("screen finish").empty());
  EpisodeScene::Find("segmentmanager")->name = "retired";
  scene.Run(1);
  scene.world.WriteFile(
      "late",
      EpisodeScene::File("segmentmanager", EpisodeScene::Box(EpisodeScene::ScriptText(
                                               "SegmentManager", EpisodeScene::Segments({{"nothing", 9.0f}})))));
  Objects().LoadLevel("late");
  scene.Run(1);
  EXPECT_EQ(Wedges().size(), 9u);
}

TEST(GameTimer, TheDeveloperEndsAMatchAtOnce) {
  EpisodeScene scene;
  scene.Start(EpisodeScene::Segments({}), EpisodeScene::Objectives({}));
  scene.Run(3);
  scene.PressKeys({SDLK_RALT, SDLK_RSHIFT, SDLK_e});
  scene.Run(3);
  EXPECT_EQ(scene.FramesOf("screen finish"), std::vector<int>{3});
  EXPECT_EQ(EpisodeScene::Find("segmentmanager"), nullptr);
}
