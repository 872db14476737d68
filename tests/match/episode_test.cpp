// The clock of a match and the pieces that follow one another in it.
#include <cmath>

#include "core/pause.h"
#include "episode_scene.h"
#include "match/game_timer.h"
#include "match/objective_link.h"
#include "match/respawn_node_manager.h"
#include "match/segment_manager.h"
#include "scripts/collision_check_script.h"
#include "scripts/death_timer.h"

namespace {

std::vector<const Sprite*> Wedges() {
  std::vector<const Sprite*> wedges;
  for (const auto& object : Objects().GetObjects()) {
    const Sprite* sprite = object->Get<Sprite>();
    if (object->alive && sprite != nullptr && sprite->texturePath == "PieChunk.png") wedges.push_back(sprite);
  }
  return wedges;
}

// A letter for each wedge: r(ed), w(hite) or g(rey), the last one to end first.
std::string Pie() {
  std::string pie;
  for (const Sprite* wedge : Wedges()) {
    const Vec3 colour = {wedge->r, wedge->g, wedge->b};
    pie += colour == Vec3{1.0f, 1.0f, 1.0f} ? 'w' : colour == Vec3{1.0f, 0.0f, 0.0f} ? 'r' : 'g';
  }
  return pie;
}

int Frames(float seconds) { return static_cast<int>(seconds / 0.0085f); }

}  // namespace

// 90 seconds: nine wedges of ten seconds, the first of which lies right of 12 o'clock and the red one left of it.
TEST_F(EpisodeTest, APieOfNineEndsTheMatch) {
  Start(Segments({{"nothing", 60.0f}, {"nothing", 30.0f}}), Objectives({}));
  Run(1);
  ASSERT_EQ(Pie(), "rwwwwwwww");
  const Sprite& last = *Wedges()[0];
  EXPECT_TRUE(last.owner->core);
  EXPECT_EQ(PositionOf(*last.owner), (Vec3{0.0f, 10.0f, 0.0f}));
  EXPECT_NEAR(last.owner->GetTransform().orientation.k, std::sin(-0.34906587f / 2.0f), 1e-6f);

  const auto pieAfter = [&](float seconds) {
    Run(Frames(seconds) - frame + 2);
    return Pie();
  };
  EXPECT_EQ(pieAfter(4.9f), "rwwwwwwww");
  EXPECT_EQ(pieAfter(5.7f), "rwwwwwwwg") << "blinks in its last five seconds";
  EXPECT_EQ(pieAfter(6.2f), "rwwwwwwww");
  EXPECT_EQ(pieAfter(30.0f), "rwwwwwggg");
  EXPECT_EQ(pieAfter(90.2f), "ggggggggg") << "the pie stays, and the red one ends grey";
  EXPECT_EQ(last.r, 100.0f / 255.0f);
  EXPECT_EQ(Find("segmentmanager"), nullptr);
  const auto end = FramesOf("screen finish");
  const auto fastMusic = FramesOf("music 2");
  ASSERT_TRUE(end.size() == 1 && fastMusic.size() == 1);
  EXPECT_NEAR(end[0], Frames(90.0f) + 3, 3);
  EXPECT_NEAR(end[0] - fastMusic[0], Frames(15.0f), 3);
}

// No episode, or one that lasts no time, gives no pie and no end but the developer's; the clock starts when one is
// there.
TEST_F(EpisodeTest, TheClockWaitsForAnEpisodeAndTheDeveloperEndsIt) {
  Start(Segments({}), Objectives({}));
  Run(50);
  EXPECT_TRUE(Wedges().empty());
  EXPECT_TRUE(FramesOf("screen finish").empty());
  Find("segmentmanager")->name = "retired";
  Run(1);
  world.WriteFile("late", File("segmentmanager", Box(ScriptText("SegmentManager", Segments({{"nothing", 9.0f}})))));
  Objects().LoadLevel("late");
  Run(1);
  EXPECT_EQ(Wedges().size(), 9u);
  for (const int key : {SDLK_RALT, SDLK_RSHIFT, SDLK_e}) SetKey(key, true);
  Run(3);
  EXPECT_EQ(FramesOf("screen finish"), std::vector<int>{52});
  EXPECT_EQ(Find("segmentmanager"), nullptr);
}

// Each piece comes when the one before it is over, which its timers end in about the same frame.
TEST_F(EpisodeTest, PiecesFollowOneAnother) {
  for (const char* piece : {"first", "second", "third"})
    world.WriteFile(piece, File(piece, Box(ScriptText("DeathTimer", "Time: 1\n"))));
  Start(Segments({{"first", 5.0f}, {"second", 5.0f}, {"third", 10.0f}}), Objectives({}));
  EXPECT_EQ(FramesOf("segment begin first"), std::vector<int>{0});
  EXPECT_EQ(FindSegmentManager()->MeasureEpisode(), 20.0f);
  Run(580);
  EXPECT_EQ(CountObjects("first"), 1);
  Run(12);
  EXPECT_EQ(CountObjects("first"), 0);
  EXPECT_EQ(CountObjects("second"), 1);
  Run(1700);
  EXPECT_NEAR(FramesOf("segment begin second").at(0), 588, 1);
  EXPECT_NEAR(FramesOf("segment begin third").at(0), 1176, 1);
  EXPECT_EQ(CountObjects("second"), 0);
  EXPECT_EQ(CountObjects("third"), 1);
}

TEST_F(EpisodeTest, SegmentsTurnAndShiftPlacesAndVelocities) {
  GameObject& pattern = world.AddSphere("thing", {1.0f, 0.0f, 0.0f}, {.velocity = {2.0f, 0.0f, 0.0f}});
  world.WriteFile("thing", Document({&pattern}));
  Start("number of segments: 1\nlevelName_: thing\nduration_: 9\nrotationAngle_: 90\ndistance_: 12\n" + kSegmentsEnd,
        Objectives({}));
  Objects().RemoveDeadObjects();
  GameObject& thing = *Find("thing");
  EXPECT_LT(Length(PositionOf(thing) - Vec3{-12.0f, 1.0f, 0.0f}), 1e-4f);
  EXPECT_NEAR(BodyOf(thing).velocity.y, 2.0f, 1e-4f);
  EXPECT_EQ(thing.GetTransform().orientation.k, 0.0f);
}

// Whatever an episode says, there is a line for it, and the match goes on.
TEST_F(EpisodeTest, SegmentsThatCannotBePlayed) {
  const struct {
    std::string values;
    const char* message;
  } cases[] = {
      {Segments({{"nowhere", 5.0f}}), "CAN'T FIND YO LEVEL, YA DON GOOFED!"},
      {Segments({{"level1", 0.1f}, {"level1", 5.0f}}), "the piece \"level1\" brings itself"},
      {"number of segments: 1000000000\n" + kSegmentsEnd, "level1: line 7: says 1000000000 segments, 0 follow"},
      {"number of segments: -1\nlevelName_: nowhere\nduration_: 5\nrotationAngle_: 0\ndistance_: 0\n" + kSegmentsEnd,
       "says -1 segments, 1 follow"},
      {Segments({{"nowhere", -3.0f}}), "the segment \"nowhere\" lasts no time"},
      {Segments({{"nowhere", std::nanf("")}}), "not a finite number"},
  };
  for (const auto& bad : cases) {
    SCOPED_TRACE(bad.message);
    world.Restart();
    log.clear();
    world.ClearText();
    Start(bad.values, Objectives({"HitObjects"}));
    Run(300);
    EXPECT_EQ(Count(world.text(), bad.message) > 0, true) << world.text();
    EXPECT_LE(CountObjects("segmentmanager"), 4) << "pieces must not multiply";
    EXPECT_EQ(FramesOf("objective begin HitObjects").front(), frame - 300);
  }
}

// The loss of a pad is noticed once; being whole again counts only while the game stands still.
TEST_F(EpisodeTest, WatchesTheGamepads) {
  Start(Segments({{"nothing", 100.0f}}), Objectives({}));
  const auto isLostAfter = [&](int frames) {
    Run(frames);
    return FindSegmentManager()->IsPadLost();
  };
  EXPECT_FALSE(isLostAfter(2));
  platform.ConnectPad(2, false);
  EXPECT_TRUE(isLostAfter(2));
  EXPECT_FALSE(IsPaused());
  RequestPause("PauseMenu");
  EXPECT_TRUE(isLostAfter(1));
  platform.ConnectPad(2, true);
  EXPECT_FALSE(isLostAfter(1));
  EXPECT_TRUE(IsPaused()) << "the menu's own reason stays";
}

TEST_F(EpisodeTest, RespawnsOnNodesThatAreFreeAndElseOnTheFallback) {
  GameObject& holder = world.Add("nodes");
  auto& nodes = Attach<RespawnNodeManager>(holder);
  nodes.fallbackPosition = {9.0f, 9.0f, 0.0f};
  for (std::size_t i = 0; i < 4; ++i) PositionOf(*nodes.GetNode(i)).x = static_cast<float>(i + 1);
  for (const std::size_t node : {0u, 1u, 3u}) {
    auto* check = nodes.GetNode(node)->Get<ScriptBox>()->GetScript("CollisionCheckScript");
    static_cast<CollisionCheckScript*>(check)->hit = true;
  }
  GameObject& a = world.Add("a");
  GameObject& b = world.Add("b");
  const auto respawnBoth = [&] {
    for (const GameObject* object : {&a, &b}) nodes.Queue(object->id);
    nodes.Update(0.0085f);
  };
  respawnBoth();
  EXPECT_EQ(PositionOf(a).x, 3.0f);
  EXPECT_EQ(PositionOf(b).x, 9.0f);
  respawnBoth();
  EXPECT_LE(PositionOf(b).x, 4.0f) << "the flags are those of one frame";
  EXPECT_NE(PositionOf(a).x, PositionOf(b).x);
  holder.alive = false;
  for (int sweep = 0; sweep < 2; ++sweep) Objects().RemoveDeadObjects();
  EXPECT_EQ(Objects().GetObjects().size(), 2u) << "the nodes go with their manager";
}
