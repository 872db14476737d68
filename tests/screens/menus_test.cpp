#include "screens/menus.h"

#include <algorithm>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "audio/test_sounds.h"
#include "core/event.h"
#include "core/game_time.h"
#include "core/pause.h"
#include "core/script_box.h"
#include "input/input.h"
#include "screens/clickable.h"
#include "screens/menu_system.h"
#include "screens/screen_scene.h"

namespace {

class MenusTest : public ScreenInMatchTest {
 protected:
  static const GameObject& Selected() {
    return *Objects().GetObject(Menus().GetCurrentMenu()->GetSelected()->objectId);
  }
  static std::string SelectedPicture() { return Selected().Get<Sprite>()->texturePath; }
};

// Everything plays at full loudness, so the largest sample tells what is muted.
bool IsHeard(Sound id, Audio::Lifetime lifetime) {
  constexpr int kUpdates = 30;
  constexpr int kFadeUpdates = 8;  // of a mute
  Audio::Play(id, lifetime);
  std::vector<std::int16_t> samples(2 * kFramesAnUpdate);
  int loudest = 0;
  for (int i = 0; i < kUpdates; ++i) {
    Audio::Update();
    Audio::Render(samples);
    if (i > kFadeUpdates) loudest = std::max<int>(loudest, *std::max_element(samples.begin(), samples.end()));
  }
  return loudest > 100;
}

}  // namespace

TEST_F(MenusTest, StopTheTimeWithSoundsAndStartOpensThemInAMatchOnly) {
  const float now = Time().elapsedTime;
  scene.PressPad(0, {Gamepad::kButtonStart, Gamepad::kButtonDown, Gamepad::kButtonA, Gamepad::kButtonA});
  EXPECT_EQ(scene.sounds, (std::vector<std::string>{"sound 24", "sound 24", "sound 24", "sound 8", "sound 8"}));
  EXPECT_EQ(Time().elapsedTime, now);
  EXPECT_EQ(scene.PressPad(1, {Gamepad::kButtonStart}), "menu close pause; pause off");
  EndMatch();
  FinishStartUp();  // Escape is bound once, however often this is called
  EXPECT_EQ(scene.PressPad(0, {Gamepad::kButtonStart}), "");
  EXPECT_EQ(scene.Press({SDLK_ESCAPE}), "pause on; menu open pause");
}

// Whatever order menus are opened in, the game goes on when the last one is closed.
TEST_F(MenusTest, OneOverAnotherPauseOnceAndLeaveNothingBehind) {
  const std::size_t before = Objects().GetObjects().size();
  OpenEndMenu();
  OpenPauseMenu();
  OpenOptionsMenu();
  EXPECT_EQ(scene.FindAll("menu label").size(), 3u);
  OpenPictureMenu("creditslevel");
  EXPECT_EQ(scene.TakeLog(),
            "pause on; menu open end; music stop; menu open pause; menu open options; menu open picture");
  scene.Run();
  EXPECT_EQ(scene.Find("creditslevel")->GetTransform().position.z, 5.0f);
  EXPECT_EQ(scene.Find("creditslevel")->GetTransform().graphicsScale, (Vec3{12.0f, 16.0f, 0.0f}));
  EXPECT_EQ(Objects().GetObjects().back().get(), &Selected()) << "drawn last";
  CloseAllMenus();
  scene.Run();
  EXPECT_EQ(Objects().GetObjects().size(), before);
  EXPECT_FALSE(IsPaused());
  CloseTopMenu();
  EXPECT_EQ(Menus().menuDepth, 1.0f) << "there was nothing to close";
}

TEST_F(MenusTest, EveryMenuLiesInFrontOfTheOneBeneath) {
  const auto expect = [&](const char* name, float board, float button) {
    scene.Run();
    EXPECT_EQ(scene.FindAll(name).back()->GetTransform().position.z, board) << name;
    EXPECT_EQ(Selected().GetTransform().position.z, button) << name;
  };
  for (const auto& openFirst : {OpenEndMenu, OpenPauseMenu}) {
    openFirst();
    expect("menubackground", 1.0f, 2.5f);
    OpenPictureMenu("howtoplaylevel");
    expect("howtoplaylevel", 3.0f, 3.5f);
    CloseTopMenu();
    OpenConfirmMenu(*Menus().GetCurrentMenu()->GetSelected());
    expect("menubackground", 3.0f, 3.5f);
    CloseTopMenu();
    OpenOptionsMenu();
    expect("menubackground", 3.0f, 3.5f);
    OpenPictureMenu("creditslevel");
    expect("creditslevel", 4.0f, 4.5f);
    CloseAllMenus();
    scene.Run();
  }
}

TEST_F(MenusTest, KeysAndDPadGoAroundTheEnds) {
  OpenPauseMenu();
  scene.Press({SDLK_w, SDLK_a, SDLK_UP, SDLK_LEFT});
  EXPECT_EQ(SelectedPicture(), "HowToPlay.png");
  scene.PressPad(1, {Gamepad::kButtonUp, Gamepad::kButtonLeft, Gamepad::kButtonLeft});
  EXPECT_EQ(SelectedPicture(), "QuitGame.png");
  scene.PressPad(0, {Gamepad::kButtonRight, Gamepad::kButtonDown});
  EXPECT_EQ(SelectedPicture(), "Restart.png");
  scene.Press({SDLK_s, SDLK_d, SDLK_DOWN, SDLK_RIGHT, SDLK_RIGHT});
  EXPECT_EQ(SelectedPicture(), "Resume.png");
}

TEST_F(MenusTest, AStickMovesOnceUntilBothAreBackInTheMiddle) {
  OpenPauseMenu();
  const auto tilt = [&](int slot, int axis, std::int16_t value) {
    scene.platform.SetPadAxis(slot, axis, value);
    scene.Run(2);
    return SelectedPicture();
  };
  EXPECT_EQ(tilt(0, 1, 32767), "Restart.png") << "left stick, down";
  tilt(0, 2, 32767);
  EXPECT_EQ(tilt(0, 1, 0), "Restart.png") << "the right one is out meanwhile";
  tilt(0, 2, 0);
  EXPECT_EQ(tilt(0, 2, -32767), "Resume.png");
  EXPECT_EQ(tilt(1, 0, 17300), "Resume.png") << "not half way";
  EXPECT_EQ(tilt(1, 0, 17500), "Restart.png") << "each pad by itself";
  scene.platform.ConnectPad(1, false);
  scene.Run();
  scene.platform.ConnectPad(1, true);
  EXPECT_EQ(tilt(1, 3, 32767), "HowToPlay.png") << "a pad that was pulled out with its stick tilted moves again";
}

// Players aim while somebody opens the menu.
TEST_F(MenusTest, AStickThatIsHeldWhenTheFirstMenuOpensIsLetGoFirst) {
  for (const int slot : {0, 1}) scene.platform.SetPadAxis(slot, 1, 32767);
  scene.Run();
  scene.PressPad(1, {Gamepad::kButtonStart});
  EXPECT_EQ(SelectedPicture(), "Resume.png");
  scene.platform.SetPadAxis(0, 1, 0);
  scene.Run();
  scene.platform.SetPadAxis(0, 1, 32767);
  scene.Run(2);
  EXPECT_EQ(SelectedPicture(), "Restart.png");
  OpenOptionsMenu();
  scene.platform.SetPadAxis(1, 1, 0);
  scene.Run();
  scene.platform.SetPadAxis(1, 1, -32767);
  scene.Run(2);
  EXPECT_EQ(SelectedPicture(), "Cancel.png") << "another menu over the first changes nothing";
}

TEST_F(MenusTest, OptionsShowWhatTheyDoAndHoldTheirState) {
  WriteMasterBanks(GameSources(0.1f));
  Audio::Init(Audio::Output::kLoopback);
  Audio::LoadEffects();
  OpenOptionsMenu();
  const struct {
    std::initializer_list<int> keys;
    const char* picture;
    bool music;
    bool effects;
  } steps[] = {{{}, "Unmuted.png", true, true},
               {{SDLK_RETURN}, "Muted.png", false, true},
               {{SDLK_s, SDLK_RETURN}, "Muted.png", false, false},  // all sound
               {{SDLK_w, SDLK_RETURN}, "Unmuted.png", false, false},
               {{SDLK_RETURN}, "Muted.png", false, false},
               {{SDLK_s, SDLK_RETURN}, "Unmuted.png", false, true},
               {{SDLK_w, SDLK_RETURN}, "Unmuted.png", true, true},
               {{SDLK_RETURN}, "Muted.png", false, true}};
  for (const auto& [keys, picture, music, effects] : steps) {
    scene.Press(keys);
    EXPECT_EQ(SelectedPicture(), picture) << "music " << music << ", effects " << effects;
    EXPECT_EQ(IsHeard(Sound::kPointBubble, Audio::kOneShot), effects) << "music " << music;
    EXPECT_EQ(IsHeard(Sound::kPodiumMusic, Audio::kLongLived), music) << "effects " << effects;
  }
  Audio::Shutdown();
  scene.Press({SDLK_s, SDLK_s});
  EXPECT_EQ(SelectedPicture(), "Fullscreen.png");
  scene.Press({SDLK_RETURN});
  EXPECT_EQ(SelectedPicture(), "Windowed.png");
  EXPECT_FALSE(scene.platform.IsFullscreen());
  CloseTopMenu();
  OpenOptionsMenu();
  EXPECT_EQ(SelectedPicture(), "Muted.png");
}

TEST_F(MenusTest, WorkWithoutTheirFilesAndWithoutButtons) {
  std::filesystem::remove("menubackground");
  scene.world.Restart();
  OpenPauseMenu();
  scene.Press({SDLK_DOWN});
  OpenPictureMenu("no such page");
  scene.Press({SDLK_RETURN});
  EXPECT_EQ(SelectedPicture(), "Restart.png");
  Menus().Push(std::make_unique<Menu>("empty", "menubackground", 9.0f));
  scene.Press({SDLK_DOWN, SDLK_UP, SDLK_RETURN});
  EXPECT_EQ(Menus().CountOpen(), 2u);
}

TEST(Clickable, GrowsUnderTheMouseAndActsOnAClick) {
  ScreenScene scene;
  GameObject& thing = scene.world.Add("thing");
  int clicks = 0;
  auto& box = thing.Insert(std::make_unique<ScriptBox>());
  auto& clickable = static_cast<Clickable&>(*box.AddScript("Clickable"));
  clickable.argument = &clicks;
  clickable.onClick = [](const void* count) { ++*static_cast<int*>(const_cast<void*>(count)); };
  // The width after an update, and the clicks so far.
  const auto expect = [&](float width, int count) {
    thing.Update(0.1f);
    EXPECT_EQ(thing.GetTransform().graphicsScale.x, width);
    EXPECT_EQ(clicks, count);
  };
  clickable.OnCollision({&thing, &scene.world.Add("other")});
  expect(1.0f, 0);
  clickable.OnCollision({&thing, &Objects().GetCursor()});
  expect(1.2f, 0);
  expect(1.0f, 0);
  SDL_Event down{};
  down.type = SDL_MOUSEBUTTONDOWN;
  down.button.button = SDL_BUTTON_LEFT;
  Input::TrackMouseEvent(down);
  clickable.OnCollision({&thing, &Objects().GetCursor()});
  expect(1.2f, 1);
  expect(1.0f, 1);
  for (const char* event : {"click", "clack"}) SendEvent("thing", Event(event));
  expect(1.0f, 2);
}
