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
#include "screens/options.h"
#include "screens/screen_scene.h"

namespace {

class MenusTest : public ScreenInMatchTest {
 protected:
  static const GameObject& Selected() {
    return *Objects().GetObject(Menus().GetCurrentMenu()->GetSelected()->objectId);
  }
  static std::string SelectedPicture() { return Selected().Get<Sprite>()->texturePath; }
  void Tilt(int slot, int axis, int value) {
    scene.platform.SetPadAxis(slot, axis, static_cast<std::int16_t>(value));
    scene.Run();
  }
};

void IgnoreArgument(const void* /*argument*/) {}

}  // namespace

TEST_F(MenusTest, APadWalksToTheConfirmationAndBack) {
  const float now = Time().elapsedTime;
  scene.PressPad(0, {Gamepad::kButtonStart, Gamepad::kButtonDown, Gamepad::kButtonA});
  EXPECT_EQ(scene.TakeLog(), "pause on; menu open pause; menu open confirm");
  EXPECT_EQ(SelectedPicture(), "Cancel.png");
  scene.PressPad(0, {Gamepad::kButtonA});
  EXPECT_EQ(scene.TakeLog(), "menu close confirm");
  EXPECT_EQ(SelectedPicture(), "Restart.png");
  EXPECT_EQ(scene.sounds, (std::vector<std::string>{"sound 24", "sound 24", "sound 24", "sound 8", "sound 8"}));
  EXPECT_EQ(Time().elapsedTime, now);
  scene.PressPad(1, {Gamepad::kButtonStart});
  EXPECT_EQ(scene.TakeLog(), "menu close pause; pause off");
}

TEST_F(MenusTest, EveryMenuLiesInFrontOfTheOneBeneath) {
  const std::size_t before = Objects().GetObjects().size();
  const auto depthOfLast = [&](const char* name) { return scene.FindAll(name).back()->GetTransform().position.z; };
  OpenPauseMenu();
  scene.Run();
  EXPECT_EQ(depthOfLast("menubackground"), 1.0f);
  EXPECT_EQ(Selected().GetTransform().position, (Vec3{0.0f, 6.0f, 2.5f}));
  OpenOptionsMenu();
  scene.Run();
  EXPECT_EQ(depthOfLast("menubackground"), 3.0f);
  EXPECT_EQ(Selected().GetTransform().position, (Vec3{2.0f, 4.0f, 3.5f}));
  EXPECT_EQ(scene.FindAll("menu label").size(), 3u);
  OpenPictureMenu("creditslevel");
  scene.Run();
  EXPECT_EQ(depthOfLast("creditslevel"), 4.0f);
  EXPECT_EQ(scene.Find("creditslevel")->GetTransform().graphicsScale, (Vec3{12.0f, 16.0f, 0.0f}));
  EXPECT_EQ(Objects().GetObjects().back().get(), &Selected()) << "drawn last";
  CloseAllMenus();
  scene.Run();
  EXPECT_EQ(Objects().GetObjects().size(), before);
  EXPECT_FALSE(IsPaused());
  CloseTopMenu();
  EXPECT_EQ(Menus().menuDepth, 1.0f) << "there was nothing to close";
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
  EXPECT_EQ(scene.FindAll("menu button").size(), 6u);
  for (const GameObject* button : scene.FindAll("menu button")) {
    const Sprite& sprite = *button->Get<Sprite>();
    EXPECT_EQ(sprite.shaderName, button == &Selected() ? "fisheye" : "default");
    EXPECT_EQ(sprite.r, button == &Selected() ? 0.0f : 1.0f);
  }
}

TEST_F(MenusTest, AStickMovesOnceUntilBothAreBackInTheMiddle) {
  OpenPauseMenu();
  Tilt(0, 1, 32767);
  scene.Run(30);
  EXPECT_EQ(SelectedPicture(), "Restart.png") << "left stick, down";
  Tilt(0, 2, 32767);
  Tilt(0, 1, 0);
  EXPECT_EQ(SelectedPicture(), "Restart.png") << "the right one is out meanwhile";
  Tilt(0, 2, 0);
  Tilt(0, 2, -32767);
  EXPECT_EQ(SelectedPicture(), "Resume.png");
  Tilt(1, 0, 17300);
  EXPECT_EQ(SelectedPicture(), "Resume.png") << "not half way";
  Tilt(1, 0, 17500);
  EXPECT_EQ(SelectedPicture(), "Restart.png") << "each pad by itself";
  scene.platform.ConnectPad(1, false);
  scene.Run();
  scene.platform.ConnectPad(1, true);
  Tilt(1, 3, 32767);
  EXPECT_EQ(SelectedPicture(), "HowToPlay.png") << "a pad that was pulled out with its stick tilted moves again";
}

TEST_F(MenusTest, OptionsShowAndHoldTheirState) {
  OpenPauseMenu();
  OpenOptionsMenu();
  EXPECT_EQ(SelectedPicture(), "Unmuted.png");
  scene.Press({SDLK_RETURN});
  EXPECT_EQ(SelectedPicture(), "Muted.png");
  scene.Press({SDLK_s, SDLK_RETURN});
  EXPECT_TRUE(GetOptions().allMuted);
  scene.Press({SDLK_RETURN});
  EXPECT_EQ(SelectedPicture(), "Unmuted.png");
  EXPECT_TRUE(GetOptions().musicMuted) << "all sound back leaves the music off";
  scene.Press({SDLK_s});
  EXPECT_EQ(SelectedPicture(), "Fullscreen.png");
  scene.Press({SDLK_RETURN});
  EXPECT_EQ(SelectedPicture(), "Windowed.png");
  EXPECT_FALSE(scene.platform.IsFullscreen());
  CloseTopMenu();
  OpenOptionsMenu();
  EXPECT_EQ(SelectedPicture(), "Muted.png");
}

// Everything plays at full loudness, so the largest sample tells what is muted.
TEST_F(MenusTest, WhatIsMutedIsNotHeard) {
  WriteMasterBanks(GameSources(0.1f));
  Audio::Init(Audio::Output::kLoopback);
  Audio::LoadEffects();
  // A mute takes a few frames to fade in.
  const auto isHeard = [](int id, int kind) {
    Audio::Play(id, kind);
    std::vector<std::int16_t> samples(2 * kFramesAnUpdate);
    int loudest = 0;
    for (int i = 0; i < 30; ++i) {
      Audio::Update();
      Audio::Render(samples);
      if (i > 8) loudest = std::max<int>(loudest, *std::max_element(samples.begin(), samples.end()));
    }
    return loudest > 100;
  };
  const struct {
    MenuCallback toggle;
    bool music;
    bool effects;
  } steps[] = {{IgnoreArgument, true, true},    {ToggleMusicMute, false, true},  {ToggleAllMute, false, false},
               {ToggleMusicMute, false, false}, {ToggleMusicMute, false, false}, {ToggleAllMute, false, true},
               {ToggleMusicMute, true, true}};
  const std::uint32_t button = 0;  // of no object
  for (const auto& [toggle, music, effects] : steps) {
    toggle(&button);
    EXPECT_EQ(isHeard(Sound::kPointBubble, Audio::kOneShot), effects) << "music " << music;
    EXPECT_EQ(isHeard(Sound::kPodiumMusic, Audio::kLongLived), music) << "effects " << effects;
  }
  Audio::Shutdown();
}

TEST_F(MenusTest, StartOpensNothingWithoutAMatchAndEscapeDoes) {
  FinishStartUp();  // Escape is bound once, however often this is called
  EndMatch();
  scene.PressPad(0, {Gamepad::kButtonStart});
  EXPECT_FALSE(Menus().IsOpen());
  scene.Press({SDLK_ESCAPE});
  EXPECT_TRUE(Menus().IsOpen());
}

// Whatever order menus are opened in, the game goes on when the last one is closed.
TEST_F(MenusTest, ThePauseIsAskedForOnce) {
  OpenEndMenu();
  OpenPauseMenu();
  EXPECT_EQ(scene.TakeLog(), "pause on; menu open end; music stop; menu open pause");
  CloseAllMenus();
  EXPECT_FALSE(IsPaused());
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
  Menu menu("plain", "menubackground", 1.0f);
  EXPECT_EQ(Objects().GetObject(menu.AddButton({}, IgnoreArgument, 0, nullptr, nullptr, false).objectId)->Get<Sprite>(),
            nullptr);
  menu.Finish();
}

TEST(Clickable, GrowsUnderTheMouseAndActsOnAClick) {
  ScreenScene scene;
  GameObject& thing = scene.world.Add("thing");
  int clicks = 0;
  auto& box = thing.Insert(std::make_unique<ScriptBox>());
  auto& clickable = static_cast<Clickable&>(*box.AddScript("Clickable"));
  clickable.argument = &clicks;
  clickable.onClick = [](const void* count) { ++*static_cast<int*>(const_cast<void*>(count)); };
  const auto meet = [&](GameObject& other) { clickable.OnCollision({&thing, &other}); };
  const auto widthAfterUpdate = [&] {
    thing.Update(0.1f);
    return thing.GetTransform().graphicsScale.x;
  };
  meet(scene.world.Add("other"));
  EXPECT_EQ(widthAfterUpdate(), 1.0f);
  meet(Objects().GetCursor());
  EXPECT_EQ(widthAfterUpdate(), 1.2f);
  EXPECT_EQ(widthAfterUpdate(), 1.0f);
  EXPECT_EQ(clicks, 0);
  SDL_Event down{};
  down.type = SDL_MOUSEBUTTONDOWN;
  down.button.button = SDL_BUTTON_LEFT;
  Input::TrackMouseEvent(down);
  meet(Objects().GetCursor());
  widthAfterUpdate();
  widthAfterUpdate();
  EXPECT_EQ(clicks, 1);
  for (const char* event : {"click", "clack"}) SendEvent("thing", Event(event));
  widthAfterUpdate();
  EXPECT_EQ(clicks, 2);
}
