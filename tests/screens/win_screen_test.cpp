#include <algorithm>

#include "core/event.h"
#include "core/pause.h"
#include "core/script_box.h"
#include "graphics/sprite_text.h"
#include "match/scoring.h"
#include "screens/screen_scene.h"

namespace {

// A match at its end, and the win screen that its clock would start.
class WinScreenTest : public ScreenInMatchTest {
 protected:
  void Start() { scene.world.Add("").Insert(std::make_unique<ScriptBox>()).AddScript("wsl"); }
  void ReachPodium() {
    Start();
    scene.Run(400);
    scene.TakeLog();
  }
};

}  // namespace

TEST_F(WinScreenTest, RunsItsStagesInOrderAndWaits) {
  scene.world.Add("stage");
  Start();
  EXPECT_NE(scene.Find("finish"), nullptr);
  scene.Run(236);
  EXPECT_EQ(scene.Find("fader"), nullptr);
  scene.Run(1 + 20);
  const Sprite* fader = scene.Find("fader")->Get<Sprite>();
  EXPECT_NEAR(fader->a, 20 * 0.017f, 1e-4f);
  scene.Run(40);
  EXPECT_NEAR(fader->a, 1.0f, 0.01f);
  for (const char* name : {"stage", "finish", "Player1"})
    EXPECT_EQ(scene.Find(name), nullptr) << name << ": cleared in the dark";
  EXPECT_NE(scene.Find("ScoreText"), nullptr);
  EXPECT_FALSE(IsMatchRunning());
  scene.Run(13 + 30);
  EXPECT_NE(scene.Find("podium backdrop"), nullptr);
  EXPECT_FALSE(scene.Find("ScoreText3")->Get<SpriteText>()->visible);
  EXPECT_EQ(scene.FrameOf("screen podium"), -1);
  scene.Run(35);
  EXPECT_GE(fader->a, 0.0f);
  EXPECT_LT(fader->a, 0.01f);
  scene.Run(1000);
  EXPECT_EQ(scene.TakeLog(), "screen finish; music stop; music 5; screen podium");
  EXPECT_EQ(std::count(scene.sounds.begin(), scene.sounds.end(), "sound 26"), 1) << "the jingle";
}

TEST_F(WinScreenTest, PutsThePlayersOnThePodiumInTheOrderOfTheirPoints) {
  for (const SentPoints& sent : {SentPoints{12, 2}, SentPoints{5, 0}, SentPoints{5, 3}})
    SendEvent(kScoreObjects[static_cast<std::size_t>(sent.player)], Event(kSentPoints, &sent));
  scene.Find("ScoreText2")->alive = false;  // a player without a display comes last
  Start();
  scene.Run(300);
  const auto portraits = scene.FindAll("portrait");
  const auto points = scene.FindAll("portrait points");
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

TEST_F(WinScreenTest, RunsToItsEndWithoutItsFiles) {
  for (const char* name : {"finish", "fader", "winscreen"}) std::filesystem::remove(name);
  Start();
  scene.Run(400);
  EXPECT_NE(scene.FrameOf("screen podium"), -1);
}

TEST_F(WinScreenTest, TheFirstPadArmsItAndThenEveryPadOpensTheMenu) {
  ReachPodium();
  scene.PressPad(1, {Gamepad::kButtonA});
  scene.PressPad(0, {Gamepad::kButtonStart});
  EXPECT_EQ(scene.TakeLog(), "") << "only the first pad arms it";
  scene.PressPad(1, {Gamepad::kButtonA});
  EXPECT_EQ(scene.TakeLog(), "pause on; menu open end; music stop");
  scene.PressPad(1, {Gamepad::kButtonA});
  EXPECT_EQ(scene.TakeLog().substr(0, 44), "screen game; menu close end; pause off; musi");
  EXPECT_TRUE(IsMatchRunning());
}

TEST_F(WinScreenTest, AKeyOpensTheMenuAtOnceAndEscapeLetsItOpenAgain) {
  ReachPodium();
  scene.Press({SDLK_RETURN});
  EXPECT_EQ(scene.TakeLog(), "pause on; menu open end; music stop");
  scene.Press({SDLK_ESCAPE});
  EXPECT_EQ(scene.TakeLog(), "menu close end; pause off");
  scene.Press({SDLK_a});
  EXPECT_EQ(scene.TakeLog(), "pause on; menu open end; music stop");
  scene.Press({SDLK_LEFT, SDLK_RETURN});
  EXPECT_FALSE(scene.platform.running);
}

// The press that confirms the restart is seen once more by the podium, which is dead by then.
TEST_F(WinScreenTest, ARestartFromThePauseMenuClosesAllMenusAndOpensNoOther) {
  ReachPodium();
  scene.Press({SDLK_ESCAPE, SDLK_DOWN, SDLK_RETURN, SDLK_LEFT, SDLK_RETURN});
  const std::string words = scene.TakeLog();
  EXPECT_EQ(words.substr(0, words.find("; music")),
            "pause on; menu open pause; menu open confirm; screen game; "
            "menu close confirm; menu close pause; pause off");
  EXPECT_EQ(Count(words, "menu open end"), 0);
  EXPECT_FALSE(IsPaused());
  EXPECT_TRUE(scene.FindAll("menu button").empty());
}
