#include "match/segment_manager.h"

#include <gtest/gtest.h>

#include "core/pause.h"
#include "core/script_box.h"
#include "episode_scene.h"
#include "match/objective_link.h"
#include "match/respawn_node_manager.h"
#include "scripts/collision_check_script.h"
#include "scripts/death_timer.h"

namespace {

const std::string kTimer = "\t\t\tComponent: \"DeathTimer\" {\n\t\t\t\tTime: 1\n\t\t\t}\n";

std::string Piece(const std::string& name) {
  return EpisodeScene::File(name, EpisodeScene::TransformAt(1.0f, 0.0f) + EpisodeScene::Box(kTimer));
}

}  // namespace

// Each piece comes when the one before it is over, which its timers end in about the same frame.
TEST(SegmentManager, PiecesFollowOneAnother) {
  EpisodeScene scene;
  for (const char* piece : {"first", "second", "third"}) scene.world.WriteFile(piece, Piece(piece));
  scene.Start(EpisodeScene::Segments({{"first", 5.0f}, {"second", 5.0f}, {"third", 10.0f}}),
              EpisodeScene::Objectives({}));
  EXPECT_EQ(scene.FramesOf("segment begin first"), std::vector<int>{0});
  scene.Run(580);
  EXPECT_EQ(EpisodeScene::CountObjects("first"), 1);
  scene.Run(12);
  EXPECT_EQ(EpisodeScene::CountObjects("first"), 0);
  EXPECT_EQ(EpisodeScene::CountObjects("second"), 1);
  scene.Run(1700);
  EXPECT_NEAR(scene.FramesOf("segment begin second").at(0), 588, 1);
  EXPECT_NEAR(scene.FramesOf("segment begin third").at(0), 1176, 1);
  EXPECT_EQ(EpisodeScene::CountObjects("second"), 0);
  EXPECT_EQ(EpisodeScene::CountObjects("third"), 1);
  EXPECT_EQ(FindSegmentManager()->MeasureEpisode(), 20.0f);
}

TEST(SegmentManager, TurnsAndShiftsPlacesAndVelocities) {
  EpisodeScene scene;
  GalePhysics::RigidBody body;
  body.velocity = {2.0f, 0.0f, 0.0f};
  Serializer writer;
  writer.OpenInMemory(6);
  body.Serialize(writer);
  scene.world.WriteFile("thing",
                        EpisodeScene::File("thing", EpisodeScene::TransformAt(1.0f, 0.0f) + writer.TakeText()));
  scene.Start(
      "number of segments: 1\nlevelName_: thing\nduration_: 9\nrotationAngle_: 90\ndistance_: 12\n"
      "SentinelSegment: NoMoreSegments\n",
      EpisodeScene::Objectives({}));
  GameObject& thing = *EpisodeScene::Find("thing");
  EXPECT_NEAR(PositionOf(thing).x, -12.0f, 1e-4f);
  EXPECT_NEAR(PositionOf(thing).y, 1.0f, 1e-4f);
  EXPECT_NEAR(BodyOf(thing).velocity.y, 2.0f, 1e-4f);
  EXPECT_EQ(thing.GetTransform().orientation.k, 0.0f);
}

// Whatever an episode says, there is a line for it, and the match goes on.
TEST(SegmentManager, ReadsWhatCannotBePlayed) {
  const std::string end = "SentinelSegment: NoMoreSegments\n";
  const struct {
    std::string values;
    const char* message;
  } cases[] = {
      {"number of segments: 1\nlevelName_: nowhere\nduration_: 5\nrotationAngle_: 0\ndistance_: 0\n" + end,
       "CAN'T FIND YO LEVEL, YA DON GOOFED!"},
      {"number of segments: 2\nlevelName_: level1\nduration_: 0.1\nrotationAngle_: 0\ndistance_: 0\n"
       "levelName_: level1\nduration_: 5\nrotationAngle_: 0\ndistance_: 0\n" +
           end,
       "the piece \"level1\" brings itself"},
      {"number of segments: 1000000000\n" + end, "level1: line 7: says 1000000000 segments, 0 follow"},
      {"number of segments: -1\nlevelName_: nowhere\nduration_: 5\nrotationAngle_: 0\ndistance_: 0\n" + end,
       "says -1 segments, 1 follow"},
      {"number of segments: 1\nlevelName_: nowhere\nduration_: -3\nrotationAngle_: 0\ndistance_: 0\n" + end,
       "the segment \"nowhere\" lasts no time"},
      {"number of segments: 1\nlevelName_: nowhere\nduration_: nan\nrotationAngle_: 0\ndistance_: 0\n" + end,
       "not a finite number"},
  };
  for (const auto& bad : cases) {
    EpisodeScene scene;
    scene.Start(bad.values, EpisodeScene::Objectives({"HitObjects"}));
    scene.Run(300);
    EXPECT_NE(scene.world.text().find(bad.message), std::string::npos) << scene.world.text();
    EXPECT_LE(EpisodeScene::CountObjects("segmentmanager"), 4) << "pieces must not multiply";
    EXPECT_EQ(scene.FramesOf("objective begin HitObjects").front(), 0) << bad.values;
  }
}

// The loss of a pad is noticed once; being whole again counts only while the game stands still.
TEST(SegmentManager, WatchesTheGamepads) {
  EpisodeScene scene;
  scene.Start(EpisodeScene::Segments({{"nothing", 100.0f}}), EpisodeScene::Objectives({}));
  scene.Run(2);
  EXPECT_FALSE(FindSegmentManager()->IsPadLost());
  scene.platform.ConnectPad(2, false);
  scene.Run(2);
  EXPECT_TRUE(FindSegmentManager()->IsPadLost());
  EXPECT_FALSE(IsPaused());
  RequestPause("PauseMenu");
  scene.Run(1);
  EXPECT_TRUE(FindSegmentManager()->IsPadLost());
  scene.platform.ConnectPad(2, true);
  scene.Run(1);
  EXPECT_FALSE(FindSegmentManager()->IsPadLost());
  EXPECT_TRUE(IsPaused()) << "the menu's own reason stays";
}

TEST(RespawnNodeManager, PlacesOnWhatIsFreeAndElseOnTheFallback) {
  TestWorld world;
  GameObject& holder = world.Add("nodes");
  auto& scripts = holder.Insert(std::make_unique<ScriptBox>());
  auto& nodes = static_cast<RespawnNodeManager&>(scripts.AddScript(std::make_unique<RespawnNodeManager>()));
  nodes.fallbackPosition = {9.0f, 9.0f, 0.0f};
  for (std::size_t i = 0; i < 4; ++i) PositionOf(*nodes.GetNode(i)).x = static_cast<float>(i + 1);
  const auto occupy = [&](std::size_t node) {
    static_cast<CollisionCheckScript*>(nodes.GetNode(node)->Get<ScriptBox>()->GetScript("CollisionCheckScript"))->hit =
        true;
  };
  GameObject& a = world.Add("a");
  GameObject& b = world.Add("b");
  for (const std::size_t node : {0u, 1u, 3u}) occupy(node);
  for (const GameObject* object : {&a, &b}) nodes.Queue(object->id);
  nodes.Update(0.0085f);
  EXPECT_EQ(PositionOf(a).x, 3.0f);
  EXPECT_EQ(PositionOf(b).x, 9.0f);
  nodes.Queue(a.id);
  nodes.Queue(b.id);
  nodes.Update(0.0085f);
  EXPECT_LE(PositionOf(b).x, 4.0f) << "the flags are those of one frame";
  EXPECT_NE(PositionOf(a).x, PositionOf(b).x);
  holder.alive = false;
  Objects().RemoveDeadObjects();
  Objects().RemoveDeadObjects();
  EXPECT_EQ(Objects().GetObjects().size(), 2u) << "the nodes go with their manager";
}
