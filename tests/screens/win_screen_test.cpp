#include "core/event.h"
#include "core/script_box.h"
#include "graphics/sprite_text.h"
#include "match/score/score_displays.h"
#include "match/score/sent_points.h"
#include "screens/menus.h"
#include "screens/screen_scene.h"

namespace {

// A match at its end, and the win screen that its clock would start.
class WinScreenTest : public ScreenInMatchTest {
 protected:
  void Start(int frames) {
    scene.world.Add("").Insert(std::make_unique<ScriptBox>()).AddScript("wsl");
    scene.Run(frames);
  }
  void ReachPodium() {
    Start(400);
    scene.TakeLog();
  }
};

}  // namespace

TEST_F(WinScreenTest, RunsItsStagesInOrderAndWaits) {
  scene.world.Add("stage");
  Start(236);
  EXPECT_EQ(scene.Find("fader"), nullptr);
  scene.Run(1 + 20);
  const Sprite* fader = scene.Find("fader")->Get<Sprite>();
  EXPECT_NEAR(fader->a, 20 * 0.017f, 1e-4f);
  EXPECT_NE(scene.Find("finish"), nullptr);
  scene.Run(40);
  EXPECT_NEAR(fader->a, 1.0f, 0.01f);
  for (const char* name : {"stage", "finish", "Player1"})
    EXPECT_EQ(scene.Find(name), nullptr) << name << ": cleared in the dark";
  EXPECT_FALSE(IsMatchRunning());
  scene.Run(13 + 30);
  EXPECT_NE(scene.Find("podium backdrop"), nullptr);
  EXPECT_FALSE(scene.Find("ScoreText3")->Get<SpriteText>()->visible);
  EXPECT_EQ(Count(scene.log, "screen podium"), 0);
  scene.Run(35);
  EXPECT_NEAR(fader->a, 0.005f, 0.005f);
  scene.Run(1000);
  EXPECT_EQ(scene.TakeLog(), "screen finish; music stop; sound 26; music 5; screen podium");
}

TEST_F(WinScreenTest, BannerAndFaderLieBetweenStageAndMenus) {
  scene.world.Add("stage");
  Start(240);
  OpenPauseMenu();
  scene.Run();
  std::vector<std::string> drawn;
  for (const auto& object : Objects().GetObjects())
    for (const char* name : {"stage", "finish", "fader", "menubackground", "menu button"})
      if (object->name == name && (drawn.empty() || drawn.back() != name)) drawn.emplace_back(name);
  EXPECT_EQ(drawn, (std::vector<std::string>{"stage", "finish", "fader", "menubackground", "menu button"}));
}

TEST_F(WinScreenTest, PutsThePlayersOnThePodiumInTheOrderOfTheirPoints) {
  for (const SentPoints& sent : {SentPoints{12, 2}, SentPoints{5, 0}, SentPoints{5, 3}})
    SendEvent(kScoreObjects[static_cast<std::size_t>(sent.player)], Event(kSentPoints, &sent));
  scene.Find("ScoreText2")->alive = false;
  Start(300);
  const struct {
    const char* picture;
    const char* points;
    float size;
    float x;
  } places[] = {{"bp.png", "12", 6.0f, -10.0f},
                {"rp.png", "5", 3.0f, -3.0f},
                {"gp.png", "5", 1.5f, 4.0f},
                {"wp.png", "-1337", 1.0f, 11.0f}};  // a player without a display
  for (std::size_t i = 0; i < 4; ++i) {
    const auto& [picture, points, size, x] = places[i];
    const GameObject& portrait = *scene.FindAll("portrait").at(i);
    EXPECT_EQ(portrait.Get<Sprite>()->texturePath, picture);
    EXPECT_EQ(portrait.GetTransform().graphicsScale, (Vec3{size, size, 0.0f}));
    EXPECT_EQ(portrait.GetTransform().position.x, x);
    EXPECT_NEAR(portrait.GetTransform().orientation.k, 1.0f, 1e-6f);
    const GameObject& text = *scene.FindAll("portrait points").at(i);
    EXPECT_EQ(text.Get<SpriteText>()->text, points);
    EXPECT_EQ(text.GetTransform().position, (Vec3{x - 1.0f, -9.0f, 0.0f}));
  }
}

TEST_F(WinScreenTest, RunsToItsEndWithoutItsFiles) {
  for (const char* name : {"finish", "fader", "winscreen"}) std::filesystem::remove(name);
  Start(400);
  EXPECT_EQ(Count(scene.TakeLog(), "screen podium"), 1);
}

TEST_F(WinScreenTest, TheFirstPadArmsItForAllAndEscapeLetsTheMenuOpenAgain) {
  ReachPodium();
  EXPECT_EQ(scene.PressPad(1, {Gamepad::kButtonA}), "") << "only the first pad arms it";
  EXPECT_EQ(scene.PressPad(0, {Gamepad::kButtonStart}), "");
  EXPECT_EQ(scene.PressPad(1, {Gamepad::kButtonA}), "pause on; menu open end; music stop");
  EXPECT_EQ(scene.Press({SDLK_ESCAPE, SDLK_a}), "menu close end; pause off; pause on; menu open end; music stop");
  for (const bool down : {true, false}) scene.SetKey(SDLK_ESCAPE, down);  // in one frame
  scene.Run();
  EXPECT_EQ(scene.PressPad(1, {Gamepad::kButtonA}), "menu close end; pause off; pause on; menu open end; music stop");
  scene.Press({SDLK_LEFT, SDLK_RETURN});
  EXPECT_FALSE(scene.platform.running);
}

TEST_F(WinScreenTest, AKeyArmsItAndOpensTheMenuAtOnce) {
  ReachPodium();
  EXPECT_EQ(scene.Press({SDLK_RETURN}), "pause on; menu open end; music stop");
}

// The press that confirms the restart is seen once more by the podium, which is dead by then.
TEST_F(WinScreenTest, ARestartFromThePauseMenuClosesAllMenusAndOpensNoOther) {
  ReachPodium();
  const std::string words = scene.Press({SDLK_ESCAPE, SDLK_DOWN, SDLK_RETURN, SDLK_LEFT, SDLK_RETURN});
  EXPECT_EQ(words.substr(0, words.find("; music")),
            "pause on; menu open pause; menu open confirm; screen game; "
            "menu close confirm; menu close pause; pause off");
  EXPECT_EQ(Count(words, "menu open end"), 0);
  EXPECT_TRUE(scene.FindAll("menu button").empty());
}
