// The clock of a match, and the pieces and rules that follow one another by it.
#include <array>
#include <cmath>

#include "core/pause.h"
#include "editor/bars/tweak_bar.h"
#include "episode_scene.h"
#include "graphics/sprite_text.h"
#include "match/episode/game_timer.h"
#include "match/episode/respawn_node_manager.h"
#include "match/episode/segment_manager.h"
#include "match/match_controller.h"
#include "match/rules/objective_manager.h"
#include "scripts/props/collision_check_script.h"

namespace {

class MatchClockTest : public EpisodeTest {
 public:
  /// A match with one segment that outlasts every test.
  void StartRules(const std::string& objectives) { Start(Segments({{"nothing", 1000.0f}}), objectives); }
  static ObjectiveManager& Manager() { return *static_cast<ObjectiveManager*>(FindObjectives()); }
  static std::vector<const Sprite*> Wedges() { return FindPictures("PieChunk.png"); }
  /// A letter for each wedge: r(ed), w(hite) or g(rey), the last one to end first.
  static std::string Pie() {
    std::string pie;
    for (const Sprite* wedge : Wedges()) pie += wedge->g == 1.0f ? 'w' : wedge->r == 1.0f ? 'r' : 'g';
    return pie;
  }
  /// The red text is the countdown, the black ones are titles.
  static GameObject* FindText(bool countdown) {
    for (const auto& object : Objects().GetObjects()) {
      const auto* text = object->Get<SpriteText>();
      if (object->alive && text != nullptr && object->name.empty() && (text->r == 1.0f) == countdown)
        return object.get();
    }
    return nullptr;
  }
};

}  // namespace

// The clock passes 0.0085 s a frame, and each new rule's slow motion takes 170.9 frames from it. The first rule lasts
// ten seconds whatever it is. The pie has nine wedges, the last of which is red, and each blinks in its last five
// seconds.
TEST_F(MatchClockTest, PiecesRulesAndAPieOfNineKeepOneClockToTheFinish) {
  for (const char* piece : {"first", "second"})
    world.WriteFile(piece, File(piece, Box(ScriptText("DeathTimer", "Time: 1\n"))));
  Start(Segments({{"first", 5.0f}, {"second", 25.0f}, {"nothing", 60.0f}}),
        Objectives({"HitObjects", "KingOfTheHill", "HitObjects", "HitObjects"}));
  const struct {
    float time;  // in seconds
    const char* pie;
    int first, second;
  } views[] = {{0.005f, "rwwwwwwww", 1, 0}, {4.95f, "rwwwwwwww", 1, 0}, {5.05f, "rwwwwwwww", 0, 1},
               {5.7f, "rwwwwwwwg", 0, 1},   {6.2f, "rwwwwwwww", 0, 1},  {29.95f, "rwwwwwggg", 0, 1},
               {30.05f, "rwwwwwggg", 0, 0}, {90.2f, "ggggggggg", 0, 0}};
  for (const auto& [time, pie, first, second] : views) {
    while (Time().elapsedTime < time) Run(1);
    EXPECT_EQ(Pie(), pie) << time;
    EXPECT_EQ(CountObjects("first"), first) << time;
    EXPECT_EQ(CountObjects("second"), second) << time;
  }
  const GameObject& last = *Wedges()[0]->owner;
  EXPECT_TRUE(last.core);
  EXPECT_NEAR(last.GetTransform().orientation.k, std::sin(-kPi / 18.0f), 1e-6f) << "it ends at 12 o'clock";
  EXPECT_EQ(Find("segmentmanager"), nullptr);
  EXPECT_EQ(FindText(false), nullptr) << "all titles are gone";
  const std::pair<const char*, std::vector<int>> due[] = {{"segment begin first", {0}},
                                                          {"segment begin second", {759}},
                                                          {"segment begin nothing", {3871}},
                                                          {"objective begin HitObjects", {0, 3871, 5218}},
                                                          {"objective end HitObjects", {1347, 5218, 6565}},
                                                          {"objective begin KingOfTheHill", {1347}},
                                                          {"objective end KingOfTheHill", {3871}},
                                                          {"music 2", {9508}},
                                                          {"screen finish", {11272}}};
  for (const auto& [event, frames] : due) EXPECT_EQ(FramesOf(event), frames) << event;
}

// No episode, or one that lasts no time, gives no pie and no end but the developer's; the clock starts when one is
// there.
TEST_F(MatchClockTest, TheClockWaitsForAnEpisodeAndTheDeveloperEndsIt) {
  Start(Segments({}), Objectives({}));
  Run(50);
  EXPECT_TRUE(Wedges().empty());
  Find("segmentmanager")->name = "retired";
  Run(1);
  world.WriteFile("late", File("segmentmanager", Box(ScriptText("SegmentManager", Segments({{"nothing", 9.0f}})))));
  Objects().LoadLevel("late");
  Run(1);
  EXPECT_EQ(Wedges().size(), 9u);
  Find("segmentmanager")->name = "taken away";  // as a level maker may: the nine seconds pass without an end
  Run(1200);
  EXPECT_TRUE(FramesOf("screen finish").empty());
  Find("taken away")->name = "segmentmanager";
  for (const int key : {SDLK_RALT, SDLK_RSHIFT, SDLK_e}) SetKey(key, true);
  Run(3);
  EXPECT_EQ(FramesOf("screen finish"), std::vector<int>{1252});
  EXPECT_EQ(Find("segmentmanager"), nullptr);
}

TEST_F(MatchClockTest, TwoClocksStartTheFastMusicOnce) {
  Start(Segments({{"nothing", 9.0f}}), Objectives({}));
  Attach<GameTimer>(world.Add("second clock"));
  Run(3);
  EXPECT_EQ(FramesOf("music 2"), std::vector<int>{0});
}

TEST_F(MatchClockTest, SegmentsTurnAndShiftPlacesAndVelocities) {
  GameObject& pattern = world.AddSphere("thing", {1.0f, 0.0f, 0.0f}, {.velocity = {2.0f, 0.0f, 0.0f}});
  world.WriteFile("thing", Document({&pattern}));
  pattern.alive = false;
  Start("number of segments: 1\nlevelName_: thing\nduration_: 9\nrotationAngle_: 90\ndistance_: 12\n" + kSegmentsEnd,
        Objectives({}));
  GameObject& thing = *FindAll("thing").at(0);
  EXPECT_LT(Length(PositionOf(thing) - Vec3{-12.0f, 1.0f, 0.0f}), 1e-4f);
  EXPECT_NEAR(BodyOf(thing).velocity.y, 2.0f, 1e-4f);
  EXPECT_EQ(thing.GetTransform().orientation.k, 0.0f);
}

// Whatever an episode and its rules say, there is a line for it, and the match goes on. An unknown rule takes its
// values with it and leaves an empty section; counts that lie lose nothing and invent nothing.
TEST_F(MatchClockTest, ReadsWhatItCannotPlay) {
  const std::string segments = Segments({{"nothing", 1000.0f}});
  const std::string objectives = Objectives({"HitObjects"});
  const std::string end = "No more objectives: Done\n";
  const struct {
    std::string segments;
    std::string objectives;
    const char* message;
    int sections = 1;
  } cases[] = {
      {Segments({{"nowhere", 5.0f}}), objectives, "CAN'T FIND YO LEVEL, YA DON GOOFED!"},
      {Segments({{"level1", 0.1f}, {"level1", 5.0f}}), objectives, "the piece \"level1\" brings itself"},
      {"number of segments: 1000000000\n" + kSegmentsEnd, objectives, "level1: line 7: says 1000000000 segments, 0"},
      {"number of segments: -1\nlevelName_: nowhere\nduration_: 5\nrotationAngle_: 0\ndistance_: 0\n" + kSegmentsEnd,
       objectives, "says -1 segments, 1 follow"},
      {Segments({{"nowhere", -3.0f}}), objectives, "the segment \"nowhere\" lasts no time"},
      {Segments({{"nowhere", std::nanf("")}}), objectives, "not a finite number"},
      {segments,
       "Sections: 3\nObjective: Regatta\nBoats: 3\nWind: 0.5\nObjective: HitObjects\nObjective: lotbb\n" + end,
       "line 16: no objective is called \"Regatta\"", 3},
      {segments, "Sections: 1000000000\nObjective: HitObjects\n" + end, "says 1000000000 objectives, 1 follow"},
      {segments, "Sections: -1\nObjective: HitObjects\n" + end, "says -1 objectives, 1 follow"},
      {segments, "Sections: 1\nObjective: lotbb\nObjective: HitObjects\n" + end, "says 1 objectives, 2 follow", 2},
      {segments, "Sections: 1\nObjective: NULL\nRuntime: -5\n" + end, "Runtime -5, taken as 0"},
      {segments, "Sections: 3\n", "says 3 objectives, 0 follow", 0},
  };
  for (const auto& bad : cases) {
    SCOPED_TRACE(bad.message);
    world.Restart();
    world.ClearText();
    Start(bad.segments, bad.objectives);
    EXPECT_EQ(Count(Document({Find("segmentmanager")}), "Objective: "), bad.sections);
    Run(300);
    EXPECT_NE(world.text().find(bad.message), std::string::npos) << world.text();
    EXPECT_LE(CountObjects("segmentmanager"), 4) << "pieces must not multiply";
    EXPECT_EQ(Manager().GetCurrentObjective() != nullptr, bad.sections > 0);
  }
}

// The loss of a pad is noticed once; being whole again counts only while the game stands still.
TEST_F(MatchClockTest, WatchesTheGamepads) {
  StartRules(Objectives({}));
  const auto isLostAfter = [&](int frames) {
    Run(frames);
    return FindSegmentManager()->IsPadLost();
  };
  EXPECT_FALSE(isLostAfter(2));
  platform.ConnectPad(2, false);
  EXPECT_TRUE(isLostAfter(2) && !IsPaused());
  RequestPause("PauseMenu");
  EXPECT_TRUE(isLostAfter(1));
  platform.ConnectPad(2, true);
  EXPECT_FALSE(isLostAfter(1));
  EXPECT_TRUE(IsPaused()) << "the menu's own reason stays";
}

TEST_F(MatchClockTest, RespawnsOnNodesThatAreFreeAndElseOnTheFallback) {
  GameObject& holder = world.Add("nodes");
  auto& nodes = Attach<RespawnNodeManager>(holder);
  nodes.fallbackPosition = {9.0f, 9.0f, 0.0f};
  for (std::size_t i = 0; i < 4; ++i) {
    PositionOf(*nodes.GetNode(i)).x = static_cast<float>(i + 1);
    auto* check = nodes.GetNode(i)->Get<ScriptBox>()->GetScript("CollisionCheckScript");
    static_cast<CollisionCheckScript*>(check)->hit = i != 2;
  }
  const std::array<GameObject*, 2> fallen = {&world.Add("a"), &world.Add("b")};
  const auto respawn = [&] {
    for (const GameObject* object : fallen) nodes.Queue(object->id);
    nodes.Update(0.0085f);
    return std::pair(PositionOf(*fallen[0]).x, PositionOf(*fallen[1]).x);
  };
  EXPECT_EQ(respawn(), std::pair(3.0f, 9.0f));
  const auto [a, b] = respawn();
  EXPECT_TRUE(a <= 4.0f && b <= 4.0f && a != b) << "the flags are those of one frame";
  holder.alive = false;
  for (int sweep = 0; sweep < 2; ++sweep) Objects().RemoveDeadObjects();
  EXPECT_EQ(Objects().GetObjects().size(), 2u) << "the nodes go with their manager";
}

// The first section is 10 seconds whatever its rule says; a rule without title has no countdown.
TEST_F(MatchClockTest, TheLastThreeSecondsOfATitledRuleAreCountedDown) {
  StartRules(Objectives({"NULL\nRuntime: 3", "HitObjects", "NULL\nRuntime: 10"}));
  const GameObject& countdown = *FindText(true);
  const auto& text = *countdown.Get<SpriteText>();
  constexpr int kFirstEnd = 1177;
  constexpr int kSevenSeconds = 171 + 824;  // the slow motion and 0.0085 s a frame
  for (const int frames : {kFirstEnd - 30, 30 + kSevenSeconds - 3}) {
    Run(frames);
    EXPECT_FALSE(text.visible);
  }
  for (const char* digit : {"5", "4", "3", "2", "1", "0"}) {
    for (const auto& [frames, size] : {std::pair{6, 0.054f}, {24, 0.03f}, {24, 0.006f}}) {
      Run(frames);
      EXPECT_EQ(text.text, digit);
      EXPECT_NEAR(countdown.GetTransform().graphicsScale.x, size, 0.004f);
    }
    Run(5);
    EXPECT_TRUE(text.visible);
  }
  Run(4);
  EXPECT_FALSE(text.visible);
}

TEST_F(MatchClockTest, AFirstSectionOfNoLengthTakesItsRulesOwn) {
  StartRules(Objectives({"NULL\nRuntime: 3", "HitObjects"}));
  TweakBar bar("editor");
  Manager().AddToTweakBar(bar);
  *std::get<float*>(bar.Find("SectionTime")->field.target) = 0.0f;
  Run(400);
  EXPECT_EQ(FramesOf("objective begin HitObjects"), std::vector<int>{352});
}

// The title goes in real time, whatever the slow motion does: a second to grow, then it slides down and shrinks. The
// countdown goes with its controller, and nothing ends by the rule's own End.
TEST_F(MatchClockTest, TheTitleGrowsSlidesAndStaysUntilTheControllerDies) {
  StartRules(Objectives({"HitObjects"}));
  Run(1);
  const GameObject* title = FindText(false);
  ASSERT_NE(title, nullptr);
  const Transform& transform = title->GetTransform();
  for (const auto& [frames, size, y] : {std::tuple{58, 0.03f, 0.0f}, {160, 0.01f, -7.0f}}) {
    Run(frames);
    EXPECT_NEAR(transform.graphicsScale.x, size, 0.001f);
    EXPECT_NEAR(transform.position.y, y, 0.1f);
  }
  Find("segmentmanager")->alive = false;
  Run(2);
  EXPECT_EQ(FindText(true), nullptr);
  EXPECT_TRUE(FramesOf("objective end HitObjects").empty());
}

TEST_F(MatchClockTest, TheKeySkipsAndTheLastRuleIsNotRunAgainAndAllAreSaved) {
  StartRules(Objectives({"KingOfTheHill", "HitObjects"}));
  const std::string saved = Document({Find("segmentmanager")});
  Run(5);
  for (int i = 0; i < 6; ++i) {
    for (const int key : {SDLK_LSHIFT, SDLK_l}) SetKey(key, i % 2 == 0);
    Run(1);
  }
  const std::pair<std::string, int> due[] = {
      {"begin KingOfTheHill", 0}, {"end KingOfTheHill", 5}, {"begin HitObjects", 5}, {"end HitObjects", 7}};
  for (const auto& [event, when] : due) EXPECT_EQ(FramesOf("objective " + event), std::vector<int>{when}) << event;
  EXPECT_EQ(Document({Find("segmentmanager")}), saved);
}
