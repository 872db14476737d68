#include "screens/start_up.h"

#include <cmath>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "audio/test_sounds.h"
#include "core/game_time.h"
#include "graphics/preload_list.h"
#include "screens/logo_screen_script.h"
#include "screens/screen_scene.h"
#include "screens/splash_screen_logic.h"

namespace {

constexpr int kLoaded = 74;          // calls that load everything, one a frame
constexpr int kPictureFrames = 177;  // of a picture that nobody skips

class StartUpTest : public testing::Test {
 protected:
  void SetUp() override { CreateLogoScreen(); }

  ScreenScene scene;
};

}  // namespace

TEST_F(StartUpTest, ScreensFollowByThemselvesAndTheTitleWaits) {
  scene.Run(10);
  EXPECT_EQ(scene.Find("loading spinner")->GetTransform().orientation.k, std::sin(10 * 0.0085f * 7.0f * 0.5f));
  scene.Run(kLoaded - 10 - 1);
  EXPECT_NE(scene.Find("loading text"), nullptr);
  scene.Run(kPictureFrames - scene.frame);
  EXPECT_EQ(scene.TakeLog(), "screen logo; music 0; screen notice");
  EXPECT_EQ(scene.Find("loading text"), nullptr);
  scene.Run(kPictureFrames - 1);
  EXPECT_EQ(scene.TakeLog(), "");
  scene.Run(500);
  scene.Click(SDL_BUTTON_LEFT);
  EXPECT_EQ(scene.Press({SDLK_ESCAPE}), "screen title");
  EXPECT_EQ(Count(scene.world.text(), "Title Created"), 0);
  EXPECT_EQ(scene.Press({SDLK_SPACE}).substr(0, 36), "music stop; screen game; music stop;");
}

TEST_F(StartUpTest, AHeldButtonSkipsTheLogoOnceLoadedAndNothingElse) {
  scene.platform.ConnectPad(0, true);
  scene.platform.SetPadButton(0, Gamepad::kButtonA, true);
  scene.Run(kLoaded);
  EXPECT_EQ(scene.TakeLog(), "screen logo; music 0") << "it counts from the frame after the last picture";
  scene.Run();
  EXPECT_EQ(Count(scene.world.text(), "Title Created\n"), 1);
  scene.Run(100);
  scene.platform.ConnectPad(2, true);
  scene.Run();
  EXPECT_TRUE(Input::GetGamepad(2).IsConnected()) << "a pad that comes under the title is opened";
  EXPECT_EQ(scene.TakeLog(), "screen title");
  EXPECT_EQ(scene.PressPad(2, {Gamepad::kButtonStart}).substr(0, 23), "music stop; screen game")
      << "each pad is armed by itself";
}

TEST_F(StartUpTest, EscapeAndClicksSkipLogoAndNotice) {
  scene.Run(kLoaded);
  scene.Click(SDL_BUTTON_RIGHT);
  CreateSplashScreen();
  EXPECT_EQ(scene.Press({SDLK_ESCAPE}), "screen logo; music 0; screen title; screen notice; screen title");
  CreateSplashScreen();
  scene.Click(SDL_BUTTON_LEFT);
  EXPECT_EQ(scene.TakeLog(), "screen notice; screen title");
}

// The timer may end the logo before the last picture is there.
TEST_F(StartUpTest, ALogoThatEndsEarlyLoadsTheRestAtOnce) {
  Time().frameStep = 0.2f;
  scene.Run(8);
  EXPECT_EQ(scene.TakeLog(), "screen logo; music 0; screen notice");
  EXPECT_FALSE(GetStartUp().loading);
  EXPECT_TRUE(LoadNextAsset());
  EXPECT_EQ(scene.Find("loading spinner"), nullptr);
}

TEST_F(StartUpTest, TheDemoKeyStartsOneMatchFromAnyScreenHoweverLongItIsHeld) {
  EXPECT_EQ(scene.Press({SDLK_p}), "screen logo; music 0") << "not while the logo loads";
  for (const int frames : {kLoaded, kPictureFrames + 1, 2 * kPictureFrames + 1}) {
    SCOPED_TRACE(frames);
    scene.world.Restart();
    BindKeys();
    SetDemoMode(false);
    CreateLogoScreen();
    scene.Run(frames);
    scene.TakeLog();
    const std::string words = scene.Hold(SDLK_p, 3 * kPictureFrames);
    EXPECT_EQ(Count(words, "screen "), 1) << words;
    EXPECT_EQ(Count(words, "screen game"), 1);
    EXPECT_TRUE(IsDemoMode());
    EXPECT_EQ(scene.Find("title"), nullptr);
    EXPECT_EQ(scene.Hold(SDLK_ESCAPE, 20), "pause on; menu open pause") << "Escape is bound once, and counts once";
  }
  SetDemoMode(false);
}

TEST_F(StartUpTest, NothingFollowsOnceTheProgramEnds) {
  for (const int frames : {0, 1, 40, kLoaded, kPictureFrames + 5, 2 * kPictureFrames + 5}) {
    scene.world.Restart();
    CreateLogoScreen();
    scene.Run(frames);
    scene.TakeLog();
    AbandonStartUp();
    Objects().KillAll();
    Objects().RemoveDeadObjects();
    EXPECT_EQ(scene.TakeLog(), "") << frames;
    EXPECT_TRUE(Objects().GetObjects().empty()) << frames;
  }
}

TEST(StartUp, EffectsAreRegisteredBesideTheTitleMusicAndAMissingBankHoldsNobodyUp) {
  for (const bool bank : {true, false}) {
    ScreenScene scene;
    if (bank) WriteMasterBanks(GameSources(0.1f));
    Audio::Init(Audio::Output::kLoopback);
    CreateLogoScreen();
    scene.Run(kLoaded);
    EXPECT_FALSE(GetStartUp().loading);
    scene.world.ClearText();
    Audio::Play(Sound::kPointBubble, Audio::kOneShot);
    EXPECT_EQ(scene.world.text().empty(), bank) << "the thread was waited for";
    AbandonStartUp();
    Audio::Shutdown();
  }
}
