#include "tools/simulate/simulate.h"
#include "match/score/point_earner.h"
#include "match/score/score_displays.h"
#include "match/score/sent_points.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "core/event.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "editor/editor.h"
#include "match/episode_scene.h"
#include "physics/generator_host.h"
#include "physics/spring.h"
#include "test_world.h"
#include "tools/printed.h"
#include "tools/simulate/digest.h"
#include "tools/simulate/input_script.h"
#include "tools/simulate/match_recorder.h"

namespace {

std::string ErrorOf(const std::string& text) {
  InputScript script;
  std::string error;
  return script.Parse(text, error) ? "" : error;
}

}  // namespace

TEST(InputScript, WrongLinesAreNamed) {
  EXPECT_EQ(ErrorOf("# nothing\n\n0 pad 0 connect # a pad\n3 key esc down\n4 mouse 10 20\n5 click left up\n"), "");
  EXPECT_EQ(ErrorOf("0 key d down\n1 key insert down\n").substr(0, 8), "line 2: ");
  for (const char* line :
       {"x key d down", "0 key d", "0 key d down now", "0 pad 4 connect", "0 pad 0 axis 6 1", "0 pad 0 axis 0 32768",
        "0 pad 0 button 16 down", "0 click side down", "0 jump", "-1 key d up", "0 bar"})
    EXPECT_EQ(ErrorOf(line).substr(0, 8), "line 1: ") << line;
}

// Events happen in their frame whatever their order in the file. The label goes up to " =", what follows is the value;
// a label that the bars do not have ends the script there.
TEST(InputScript, DrivesTheEditor) {
  TestWorld world;
  GetEditor().Init();
  ScriptedPlatform platform;
  InputScript script;
  std::string error;
  ASSERT_TRUE(
      script.Parse("2 bar Level Duration = long\n2 bar FileName = unheard\n1 bar FileName =\n1 bar Undo\n"
                   "0 bar FileName = my stage\n0 bar Level Duration = 7.5 # seconds\n",
                   error));
  EXPECT_TRUE(script.Apply(0, platform, error)) << error;
  EXPECT_EQ(GetEditor().Get("FileName"), "my stage");
  EXPECT_EQ(GetEditor().Get("Level Duration"), "7.5");
  EXPECT_TRUE(script.Apply(1, platform, error)) << error;
  EXPECT_EQ(GetEditor().Get("FileName"), "");
  EXPECT_FALSE(script.Apply(2, platform, error));
  EXPECT_EQ(GetEditor().Get("FileName"), "");
  EXPECT_EQ(error, "line 1: \"long\" is no value for Level Duration");
  InputScript lost;
  ASSERT_TRUE(lost.Parse("\n0 bar options/Undo it\n", error));
  EXPECT_FALSE(lost.Apply(0, platform, error));
  EXPECT_EQ(error, "line 2: the bars have no button \"options/Undo it\"");
  GetEditor().Init();
}

// Equal scenes have one digest whatever IDs their objects have; a change in the last bit of one number shows.
TEST(Digest, TellsStatesApartAndIgnoresIds) {
  TestWorld world;
  const auto digestOf = [&](float speed, float radius = 1.0f) {
    Objects().KillAll();
    Objects().RemoveDeadObjects();
    world.AddSphere("ball", {1.0f, 0.0f, 0.0f}, {.velocity = {speed, 0.0f, 0.0f}, .radius = radius});
    return StateDigest();
  };
  const auto first = digestOf(1.0f);
  EXPECT_EQ(StateDigest(), first);
  EXPECT_NE(digestOf(1.0000001f), first);
  EXPECT_NE(digestOf(1.0f, 1.0000001f), first);
  EXPECT_EQ(digestOf(1.0f), first);

  auto& anchor = world.AddSphere("anchor", {});
  GalePhysics::AdoptForceGenerator(std::make_unique<GalePhysics::Spring>(anchor, 1.0f, 1.0f));
  world.AddSphere("box", {5.0f, 5.0f, 0.0f})
      .Insert(std::make_unique<ScriptBox>())
      .AddScript(std::make_unique<GalePhysics::Spring>(anchor, 2.0f, 1.0f));
  const auto sprung = StateDigest();
  EXPECT_EQ(StateDigest(), sprung) << "a digest leaves no trace";
  EXPECT_TRUE(BodyOf(anchor).baseOfGenerators.empty());
}

// The podium's numbers are those of the frame before it: what arrives later is lost. A rule counts as paid when
// somebody is awarded in its time, up to and with its end, and what a seat was paid counts before it arrives.
TEST(MatchRecorder, CountsLeadsWinsAndWhatPaid) {
  EpisodeScene scene;
  scene.Start(scene.Segments({{"nothing", 100.0f}}), scene.Objectives({}));
  const auto credit = [](int player, int value) {
    const SentPoints sent = {value, player};
    SendEvent(kScoreObjects[static_cast<std::size_t>(player)], Event(kSentPoints, &sent));
  };
  MatchRecorder recorder(&scene);
  recorder.TellSeats({"lead", "near", "near", "pilot"});
  const auto run = [&] {
    scene.Run();
    recorder.EndFrame();
  };
  run();
  LogEvent("objective begin HitObjects");
  for (const auto& [player, value] : {std::pair{1, 10}, {0, 10}, {0, 5}}) {
    credit(player, value);
    run();
  }
  LogEvent("objective end HitObjects");
  LogEvent("objective begin Crown");
  AwardPoints(2, 1);
  LogEvent("objective end Crown");
  credit(3, 20);
  run();
  EXPECT_FALSE(recorder.IsDecided());
  EndMatch();
  credit(2, 100);
  run();
  LogEvent("screen podium");
  ASSERT_TRUE(recorder.IsDecided() && recorder.IsAtPodium());
  EXPECT_EQ(Printed([&](std::FILE* out) { recorder.FinishMatch(out, 6); }), "match 1 15 10 0 20 leads 2 frames 6\n");
  EXPECT_EQ(Printed([&](std::FILE* out) { recorder.PrintRanking(out); }),
            "rank 1 Player4 20\nrank 2 Player1 15\nrank 3 Player2 10\nrank 4 Player3 0\n");
  const std::string tables = Printed([&](std::FILE* out) { recorder.PrintTables(out); });
  EXPECT_EQ(tables.substr(0, tables.find("generators")),
            "paid HitObjects 0\npaid Crown 1\nwins Player1 0\nwins Player2 0\nwins Player3 0\nwins Player4 1\n"
            "spread-median 100.0\n"
            "rule HitObjects paid 1 1 0 0 points 15.0 10.0 0.0 0.0\nrule Crown paid 0 0 1 0 points 0.0 0.0 1.0 0.0\n"
            "seat Player1 lead wins 0 of 1 0.0 % points 15.0\nseat Player2 near wins 0 of 1 0.0 % points 10.0\n"
            "seat Player3 near wins 0 of 1 0.0 % points 0.0\nseat Player4 pilot wins 1 of 1 100.0 % points 20.0\n"
            "kind lead seats 1 wins 0 of 1 0.0 % points 15.0\nkind near seats 2 wins 0 of 1 0.0 % points 5.0\n"
            "kind pilot seats 1 wins 1 of 1 100.0 % points 20.0\n");
  EXPECT_EQ(scene.FramesOf("points Player4 20").size(), 1u);
  recorder.BeginMatch();
  EXPECT_FALSE(recorder.IsDecided() || recorder.IsAtPodium());
}
