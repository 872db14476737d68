#include <gtest/gtest.h>

#include <algorithm>

#include "core/event.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/pause.h"
#include "core/run_log.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "graphics/sprite_text.h"
#include "match/new_game.h"
#include "match/scoring.h"
#include "screens/screen_scene.h"
#include "test_world.h"

namespace {

constexpr float kStep = 0.0085f;

std::string OneObject(const std::string& name) {
  std::string text = "{\n\t1: {\n\t\tName: ";
  text += name;
  return text += "\n\t\tCore: false\n\t}\n}\n";
}

// A match at its end, and the win screen that its clock would start.
class EndScene : public RunLogListener {
 public:
  EndScene() {
    world.WriteFile("level1", OneObject("stage"));
    for (const char* name : {"finish", "fader", "winscreen"})
      std::filesystem::copy_file(std::filesystem::path(BRINEWHIRL_GAME_DIR) / name, name);
    NewGame();
    Objects().RemoveDeadObjects();
    SetRunLogListener(this);
  }
  EndScene(const EndScene&) = delete;
  EndScene& operator=(const EndScene&) = delete;
  ~EndScene() override { SetRunLogListener(nullptr); }

  void Start() {
    GameObject& object = world.Add("");
    object.Insert(std::make_unique<ScriptBox>());
    object.Get<ScriptBox>()->AddScript("wsl");
    screenId = object.id;
  }
  void Frames(int frames) {
    for (int i = 0; i < frames; ++i) {
      Objects().GetObject(screenId)->Update(kStep);
      Objects().RemoveDeadObjects();
      Time().elapsedTime += kStep;
    }
  }
  void Give(int player, int points) {
    const SentPoints sent = {points, player};
    SendEvent(kScoreObjects[static_cast<std::size_t>(player)], Event(kSentPoints, &sent));
  }
  static GameObject* Find(std::string_view name) { return Objects().FindObjectByName(name); }
  void OnEvent(std::string_view text) override { log.emplace_back(text); }

  TestWorld world;
  std::uint32_t screenId = 0;
  std::vector<std::string> log;
};

std::vector<const GameObject*> AllNamed(std::string_view name) {
  std::vector<const GameObject*> found;
  for (const auto& object : Objects().GetObjects())
    if (object->alive && object->name == name) found.push_back(object.get());
  return found;
}

}  // namespace

TEST(WinScreen, RunsItsStagesInOrderAndWaits) {
  EndScene scene;
  scene.Start();
  EXPECT_NE(scene.Find("finish"), nullptr);
  scene.Frames(236);
  EXPECT_EQ(scene.Find("fader"), nullptr);
  scene.Frames(1 + 20);
  const Sprite* fader = scene.Find("fader")->Get<Sprite>();
  EXPECT_NEAR(fader->a, 20 * 0.017f, 1e-4f);
  scene.Frames(40);
  EXPECT_NEAR(fader->a, 1.0f, 0.01f);
  EXPECT_EQ(scene.Find("stage"), nullptr) << "the stage is cleared in the dark";
  EXPECT_EQ(scene.Find("finish"), nullptr);
  EXPECT_EQ(scene.Find("Player1"), nullptr);
  EXPECT_NE(scene.Find("ScoreText"), nullptr);
  EXPECT_FALSE(IsMatchRunning());
  scene.Frames(13 + 30);
  EXPECT_NE(scene.Find("podium backdrop"), nullptr);
  EXPECT_FALSE(scene.Find("ScoreText3")->Get<SpriteText>()->visible);
  EXPECT_EQ(std::count(scene.log.begin(), scene.log.end(), "screen podium"), 0);
  scene.Frames(35);
  EXPECT_GE(fader->a, 0.0f);
  EXPECT_LT(fader->a, 0.01f);
  scene.Frames(1000);
  std::vector<std::string> marks;
  for (const std::string& text : scene.log)
    if (text.rfind("screen", 0) == 0 || text.rfind("music", 0) == 0 || text == "sound 26") marks.push_back(text);
  EXPECT_EQ(marks, (std::vector<std::string>{"screen finish", "music stop", "sound 26", "music 5", "screen podium"}));
}

TEST(WinScreen, PutsThePlayersOnThePodiumInTheOrderOfTheirPoints) {
  EndScene scene;
  scene.Give(2, 12);
  scene.Give(0, 5);
  scene.Give(3, 5);
  scene.Find("ScoreText2")->alive = false;  // a player without a display comes last
  scene.Start();
  scene.Frames(300);
  const auto portraits = AllNamed("portrait");
  const auto points = AllNamed("portrait points");
  ASSERT_EQ(portraits.size(), 4u);
  ASSERT_EQ(points.size(), 4u);
  const char* pictures[] = {"bp.png", "rp.png", "gp.png", "wp.png"};
  const char* texts[] = {"12", "5", "5", "-1337"};
  const float sizes[] = {6.0f, 3.0f, 1.5f, 1.0f};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(portraits[i]->Get<Sprite>()->texturePath, pictures[i]);
    EXPECT_EQ(portraits[i]->GetTransform().graphicsScale, (Vec3{sizes[i], sizes[i], 0.0f}));
    EXPECT_EQ(portraits[i]->GetTransform().position.x, -10.0f + 7.0f * static_cast<float>(i));
    EXPECT_NEAR(portraits[i]->GetTransform().orientation.k, 1.0f, 1e-6f);
    EXPECT_EQ(points[i]->Get<SpriteText>()->text, texts[i]);
    EXPECT_EQ(points[i]->GetTransform().position, (Vec3{-11.0f + 7.0f * static_cast<float>(i), -9.0f, 0.0f}));
  }
}

TEST(WinScreen, RunsToItsEndWithoutItsFiles) {
  EndScene scene;
  for (const char* name : {"finish", "fader", "winscreen"}) std::filesystem::remove(name);
  scene.Start();
  scene.Frames(400);
  EXPECT_EQ(scene.log.back(), "screen podium");
}

namespace {

// The podium, waiting, in a program that runs whole frames.
class PodiumTest : public testing::Test {
 protected:
  void SetUp() override {
    NewGame();
    FinishStartUp();
    GameObject& object = scene.world.Add("podium");
    object.Insert(std::make_unique<ScriptBox>()).AddScript("wsl");
    for (int slot : {0, 1}) scene.platform.ConnectPad(slot, true);
    scene.Run(400);
    scene.TakeLog();
  }

  ScreenScene scene;
};

}  // namespace

TEST_F(PodiumTest, TheFirstPadArmsItAndThenEveryPadOpensTheMenu) {
  scene.PressPad(1, Gamepad::kButtonA);
  EXPECT_EQ(scene.TakeLog(), "") << "only the first pad arms it";
  scene.PressPad(0, Gamepad::kButtonStart);
  EXPECT_EQ(scene.TakeLog(), "");
  scene.PressPad(1, Gamepad::kButtonA);
  EXPECT_EQ(scene.TakeLog(), "pause on; menu open end; music stop");
  scene.PressPad(1, Gamepad::kButtonA);
  EXPECT_EQ(scene.TakeLog().substr(0, 44), "screen game; menu close end; pause off; musi");
  EXPECT_TRUE(IsMatchRunning());
}

TEST_F(PodiumTest, AKeyOpensTheMenuAtOnceAndEscapeLetsItOpenAgain) {
  scene.Press(SDLK_RETURN);
  EXPECT_EQ(scene.TakeLog(), "pause on; menu open end; music stop");
  scene.Press(SDLK_ESCAPE);
  EXPECT_EQ(scene.TakeLog(), "menu close end; pause off");
  scene.SetKey(SDLK_ESCAPE, false);
  scene.Press(SDLK_a);
  EXPECT_EQ(scene.TakeLog(), "pause on; menu open end; music stop");
  scene.Press(SDLK_LEFT);
  scene.Press(SDLK_RETURN);
  EXPECT_FALSE(scene.platform.running);
}

// The press that confirms the restart is seen once more by the podium, which is dead by then.
TEST_F(PodiumTest, RestartingFromThePauseMenuOpensNoOther) {
  for (const int key : {SDLK_ESCAPE, SDLK_DOWN, SDLK_RETURN, SDLK_LEFT, SDLK_RETURN}) scene.Press(key);
  EXPECT_EQ(Count(scene.TakeLog(), "menu open end"), 0);
  EXPECT_FALSE(IsPaused());
}
