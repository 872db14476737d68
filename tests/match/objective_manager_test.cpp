#include "match/objective_manager.h"

#include <gtest/gtest.h>

#include "core/field_bar.h"
#include "core/script_box.h"
#include "episode_scene.h"
#include "graphics/sprite_text.h"
#include "match/objective_factory.h"
#include "match/objective_link.h"

namespace {

// A controller whose one segment outlasts every test.
class ObjectiveScene : public EpisodeScene {
 public:
  explicit ObjectiveScene(const std::string& objectives) { Start(Segments({{"nothing", 1000.0f}}), objectives); }

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

// An editor that knows one field, the running section's length.
class SectionTimeBar : public FieldBar {
 public:
  void BeginGroup(std::string_view) override {}
  void EndGroup() override {}
  void Add(Field field) override {
    if (field.label == "SectionTime") time = *std::get_if<float*>(&field.target);
  }
  void AddButton(std::string_view, std::string_view, std::function<void()>) override {}

  float* time = nullptr;

 protected:
  float* Keep(float) override { return nullptr; }
  int* Keep(int) override { return nullptr; }
};

const std::string kNull = "NULL\nRuntime: 10";

}  // namespace

// 10 or 20 seconds of 0.0085 s each, and 170.9 frames that the slow motion takes away.
TEST(ObjectiveManager, SectionsLastTheirTimeAndTheFreeze) {
  ObjectiveScene scene(EpisodeScene::Objectives({"HitObjects", "KingOfTheHill", "HitObjects", "HitObjects"}));
  scene.Run(7000);
  const auto hits = scene.FramesOf("objective begin HitObjects");
  const auto hill = scene.FramesOf("objective begin KingOfTheHill");
  ASSERT_EQ(hits.size(), 3u);
  ASSERT_EQ(hill.size(), 1u);
  EXPECT_EQ(hits[0], 0);
  EXPECT_NEAR(hill[0], 1348, 2);
  EXPECT_NEAR(hits[1] - hill[0], 2524, 2);
  EXPECT_NEAR(hits[2] - hits[1], 1347, 2);
  EXPECT_EQ(scene.FramesOf("objective end KingOfTheHill"), std::vector<int>{hits[1]});
  EXPECT_EQ(scene.FramesOf("objective end HitObjects").size(), 3u) << "each ends once, the last one too";
  EXPECT_EQ(ObjectiveScene::Manager().GetCurrentObjective(), nullptr);
  EXPECT_EQ(ObjectiveScene::FindText(false), nullptr);
}

// The first section is 10 seconds whatever its rule says; a rule without title has no countdown.
TEST(ObjectiveManager, CountsTheLastThreeSecondsDown) {
  ObjectiveScene scene(EpisodeScene::Objectives({"NULL\nRuntime: 3", "HitObjects", kNull}));
  std::vector<std::string> digits;
  std::vector<int> starts;
  for (; scene.frame < 2700; scene.Run(1)) {
    const GameObject* countdown = ObjectiveScene::FindText(true);
    ASSERT_NE(countdown, nullptr);
    const auto& text = *countdown->Get<SpriteText>();
    if (!text.visible) continue;
    ASSERT_LE(countdown->GetTransform().graphicsScale.x, 0.06f);
    ASSERT_GE(countdown->GetTransform().graphicsScale.x, 0.0f);
    if (!digits.empty() && digits.back() == text.text) continue;
    digits.push_back(text.text);
    starts.push_back(scene.frame);
  }
  EXPECT_EQ(digits, (std::vector<std::string>{"5", "4", "3", "2", "1", "0"}));
  EXPECT_NEAR(starts[0], 1177 + 171 + (7.0f / 0.0085f), 4);
  for (std::size_t i = 1; i < starts.size(); ++i) EXPECT_NEAR(starts[i] - starts[i - 1], 59, 1);
}

TEST(ObjectiveManager, AFirstSectionOfNoLengthTakesItsRulesOwn) {
  ObjectiveScene scene(EpisodeScene::Objectives({"NULL\nRuntime: 3", "HitObjects"}));
  SectionTimeBar bar;
  ObjectiveScene::Manager().AddToTweakBar(bar);
  ASSERT_NE(bar.time, nullptr);
  EXPECT_EQ(*bar.time, 10.0f);
  *bar.time = 0.0f;
  scene.Run(400);
  EXPECT_EQ(scene.FramesOf("objective begin HitObjects"), std::vector<int>{352});
}

// In real time, whatever the slow motion does: a second to grow, then it slides down and shrinks.
TEST(ObjectiveManager, TheTitleGrowsSlidesAndStays) {
  ObjectiveScene scene(EpisodeScene::Objectives({"HitObjects"}));
  scene.Run(1);
  const GameObject* title = ObjectiveScene::FindText(false);
  ASSERT_NE(title, nullptr);
  EXPECT_EQ(title->Get<SpriteText>()->text, "HIT STUFF, GET POINTS");
  scene.Run(58);
  EXPECT_NEAR(title->GetTransform().graphicsScale.x, 0.03f, 0.001f);
  EXPECT_EQ(title->GetTransform().position.y, 0.0f);
  scene.Run(160);
  EXPECT_NEAR(title->GetTransform().graphicsScale.x, 0.01f, 0.001f);
  EXPECT_NEAR(title->GetTransform().position.y, -7.0f, 0.1f);
}

TEST(ObjectiveManager, TheKeySkipsAndTheLastRuleIsNotRunAgain) {
  ObjectiveScene scene(EpisodeScene::Objectives({"KingOfTheHill", "HitObjects"}));
  scene.Run(5);
  for (int i = 0; i < 3; ++i) {
    scene.PressKeys({SDLK_LSHIFT, SDLK_l});
    scene.Run(1);
    for (const int key : {SDLK_LSHIFT, SDLK_l}) {
      SDL_Event up{};
      up.type = SDL_KEYUP;
      up.key.keysym.sym = key;
      scene.platform.Push(up);
    }
    scene.Run(1);
  }
  EXPECT_EQ(scene.FramesOf("objective end KingOfTheHill"), std::vector<int>{5});
  EXPECT_EQ(scene.FramesOf("objective begin HitObjects"), std::vector<int>{5});
  EXPECT_EQ(scene.FramesOf("objective end HitObjects"), std::vector<int>{7});
  EXPECT_EQ(scene.FramesOf("objective begin KingOfTheHill").size(), 1u);
}

// An unknown rule takes its values with it and leaves an empty section; counts that lie lose nothing and invent
// nothing.
TEST(ObjectiveManager, ReadsWhatItCannotUnderstand) {
  const struct {
    std::string values;
    const char* message;
    int sections;
  } cases[] = {
      {"Sections: 2\nObjective: Regatta\nBoats: 3\nWind: 0.5\nObjective: HitObjects\nNo more objectives: Done\n",
       "line 16: no objective is called \"Regatta\"", 2},
      {"Sections: 1000000000\nObjective: HitObjects\nNo more objectives: Done\n",
       "says 1000000000 objectives, 1 follow", 1},
      {"Sections: -1\nObjective: HitObjects\nNo more objectives: Done\n", "says -1 objectives, 1 follow", 1},
      {"Sections: 1\nObjective: lotbb\nObjective: HitObjects\nNo more objectives: Done\n",
       "says 1 objectives, 2 follow", 2},
      {"Sections: 1\nObjective: NULL\nRuntime: -5\nNo more objectives: Done\n", "Runtime -5, taken as 0", 1},
      {"Sections: 3\n", "says 3 objectives, 0 follow", 0},
  };
  for (const auto& bad : cases) {
    ObjectiveScene scene(bad.values);
    EXPECT_NE(scene.world.text().find(bad.message), std::string::npos) << scene.world.text();
    Serializer writer;
    writer.OpenInMemory(6);
    ObjectiveScene::Manager().Serialize(writer);
    EXPECT_EQ(Count(writer.TakeText(), "Objective: "), bad.sections) << bad.values;
    scene.Run(10);
  }
}

// Saving walks the list and moves nothing; the text reads back to the same list.
TEST(ObjectiveManager, SavesInMidMatchWhatItHasRead) {
  const std::string values =
      "Sections: 3\nObjective: HitObjects\nObjective: NULL\nRuntime: 7\nObjective: lotbb\n"
      "No more objectives: Done\n";
  ObjectiveScene scene(values);
  scene.Run(100);
  Serializer writer;
  writer.OpenInMemory(6);
  ObjectiveScene::Manager().Serialize(writer);
  EXPECT_EQ(writer.TakeText(), values);
  scene.Run(1300);
  EXPECT_EQ(ObjectiveScene::Manager().GetCurrentObjective()->typeName, "NULL");
  EXPECT_EQ(ObjectiveScene::Manager().GetEpisodeLength(), 1000.0f);
}

// The controller takes its countdown along, and nothing ends by the rule's own End.
TEST(ObjectiveManager, DiesWithoutAnEnd) {
  ObjectiveScene scene(EpisodeScene::Objectives({"HitObjects"}));
  scene.Run(10);
  EpisodeScene::Find("segmentmanager")->alive = false;
  scene.Run(2);
  EXPECT_EQ(ObjectiveScene::FindText(true), nullptr);
  EXPECT_TRUE(scene.FramesOf("objective end HitObjects").empty());
}
