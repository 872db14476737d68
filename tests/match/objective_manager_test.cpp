#include "match/objective_manager.h"

#include "editor/tweak_bar.h"
#include "episode_scene.h"
#include "graphics/sprite_text.h"
#include "match/objective_factory.h"
#include "match/objective_link.h"

namespace {

class ObjectiveManagerTest : public EpisodeTest {
 public:
  // A match with a controller whose one segment outlasts every test.
  void StartRules(const std::string& objectives) { Start(Segments({{"nothing", 1000.0f}}), objectives); }
  static ObjectiveManager& Manager() { return *static_cast<ObjectiveManager*>(FindObjectives()); }
  // The red text is the countdown, the black ones are titles.
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

// 10 or 20 seconds of 0.0085 s each, and 170.9 frames that the slow motion takes away.
TEST_F(ObjectiveManagerTest, SectionsLastTheirTimeAndTheFreeze) {
  StartRules(Objectives({"HitObjects", "KingOfTheHill", "HitObjects", "HitObjects"}));
  Run(7000);
  const auto hits = FramesOf("objective begin HitObjects");
  const auto hill = FramesOf("objective begin KingOfTheHill");
  ASSERT_EQ(hits.size(), 3u);
  ASSERT_EQ(hill.size(), 1u);
  EXPECT_EQ(hits[0], 0);
  EXPECT_NEAR(hill[0], 1348, 2);
  EXPECT_NEAR(hits[1] - hill[0], 2524, 2);
  EXPECT_NEAR(hits[2] - hits[1], 1347, 2);
  EXPECT_EQ(FramesOf("objective end KingOfTheHill"), std::vector<int>{hits[1]});
  EXPECT_EQ(FramesOf("objective end HitObjects").size(), 3u) << "each ends once, the last one too";
  EXPECT_EQ(Manager().GetCurrentObjective(), nullptr);
  EXPECT_EQ(FindText(false), nullptr);
}

// The first section is 10 seconds whatever its rule says; a rule without title has no countdown.
TEST_F(ObjectiveManagerTest, CountsTheLastThreeSecondsDown) {
  StartRules(Objectives({"NULL\nRuntime: 3", "HitObjects", "NULL\nRuntime: 10"}));
  std::string digits;
  std::vector<int> starts;
  for (; frame < 2700; Run(1)) {
    const GameObject* countdown = FindText(true);
    ASSERT_NE(countdown, nullptr);
    const auto& text = *countdown->Get<SpriteText>();
    if (!text.visible) continue;
    ASSERT_LE(countdown->GetTransform().graphicsScale.x, 0.06f);
    ASSERT_GE(countdown->GetTransform().graphicsScale.x, 0.0f);
    if (digits.ends_with(text.text)) continue;
    digits += text.text;
    starts.push_back(frame);
  }
  EXPECT_EQ(digits, "543210");
  EXPECT_NEAR(starts[0], 1177 + 171 + (7.0f / 0.0085f), 4);
  for (std::size_t i = 1; i < starts.size(); ++i) EXPECT_NEAR(starts[i] - starts[i - 1], 59, 1);
}

TEST_F(ObjectiveManagerTest, AFirstSectionOfNoLengthTakesItsRulesOwn) {
  StartRules(Objectives({"NULL\nRuntime: 3", "HitObjects"}));
  TweakBar bar("editor");
  Manager().AddToTweakBar(bar);
  float& sectionTime = *std::get<float*>(bar.Find("SectionTime")->field.target);
  EXPECT_EQ(sectionTime, 10.0f);
  sectionTime = 0.0f;
  Run(400);
  EXPECT_EQ(FramesOf("objective begin HitObjects"), std::vector<int>{352});
}

// The title goes in real time, whatever the slow motion does: a second to grow, then it slides down and shrinks. The
// countdown goes with its controller, and nothing ends by the rule's own End.
TEST_F(ObjectiveManagerTest, TheTitleGrowsSlidesAndStaysUntilTheControllerDies) {
  StartRules(Objectives({"HitObjects"}));
  Run(1);
  const GameObject* title = FindText(false);
  ASSERT_NE(title, nullptr);
  EXPECT_EQ(title->Get<SpriteText>()->text, "HIT STUFF, GET POINTS");
  Run(58);
  EXPECT_NEAR(title->GetTransform().graphicsScale.x, 0.03f, 0.001f);
  EXPECT_EQ(title->GetTransform().position.y, 0.0f);
  Run(160);
  EXPECT_NEAR(title->GetTransform().graphicsScale.x, 0.01f, 0.001f);
  EXPECT_NEAR(title->GetTransform().position.y, -7.0f, 0.1f);
  Find("segmentmanager")->alive = false;
  Run(2);
  EXPECT_EQ(FindText(true), nullptr);
  EXPECT_TRUE(FramesOf("objective end HitObjects").empty());
}

TEST_F(ObjectiveManagerTest, TheKeySkipsAndTheLastRuleIsNotRunAgain) {
  StartRules(Objectives({"KingOfTheHill", "HitObjects"}));
  Run(5);
  for (int i = 0; i < 6; ++i) {
    for (const int key : {SDLK_LSHIFT, SDLK_l}) SetKey(key, i % 2 == 0);
    Run(1);
  }
  EXPECT_EQ(FramesOf("objective end KingOfTheHill"), std::vector<int>{5});
  EXPECT_EQ(FramesOf("objective begin HitObjects"), std::vector<int>{5});
  EXPECT_EQ(FramesOf("objective end HitObjects"), std::vector<int>{7});
  EXPECT_EQ(FramesOf("objective begin KingOfTheHill").size(), 1u);
}

// An unknown rule takes its values with it and leaves an empty section; counts that lie lose nothing and invent
// nothing.
TEST_F(ObjectiveManagerTest, ReadsWhatItCannotUnderstand) {
  const struct {
    const char* values;
    const char* message;
    int sections;
  } cases[] = {
      {"3\nObjective: Regatta\nBoats: 3\nWind: 0.5\nObjective: HitObjects\nObjective: lotbb\n",
       "line 16: no objective is called \"Regatta\"", 3},
      {"1000000000\nObjective: HitObjects\n", "says 1000000000 objectives, 1 follow", 1},
      {"-1\nObjective: HitObjects\n", "says -1 objectives, 1 follow", 1},
      {"1\nObjective: lotbb\nObjective: HitObjects\n", "says 1 objectives, 2 follow", 2},
      {"1\nObjective: NULL\nRuntime: -5\n", "Runtime -5, taken as 0", 1},
      {"3\n", "says 3 objectives, 0 follow", 0},
  };
  for (const auto& bad : cases) {
    SCOPED_TRACE(bad.message);
    world.Restart();
    world.ClearText();
    StartRules(std::string("Sections: ") + bad.values + (bad.sections > 0 ? "No more objectives: Done\n" : ""));
    EXPECT_NE(world.text().find(bad.message), std::string::npos) << world.text();
    EXPECT_EQ(Count(TextOf(Manager()), "Objective: "), bad.sections);
    Run(10);
  }
}

// Saving walks the list and moves nothing; the text reads back to the same list.
TEST_F(ObjectiveManagerTest, SavesInMidMatchWhatItHasRead) {
  const std::string values = Objectives({"HitObjects", "NULL\nRuntime: 7", "lotbb"});
  StartRules(values);
  Run(100);
  EXPECT_EQ(TextOf(Manager()), values);
  Run(1300);
  EXPECT_EQ(Manager().GetCurrentObjective()->typeName, "NULL");
  EXPECT_EQ(Manager().GetEpisodeLength(), 1000.0f);
}
