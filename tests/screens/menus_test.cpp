#include "screens/menus.h"

#include <gtest/gtest.h>

#include "core/event.h"
#include "core/game_time.h"
#include "core/pause.h"
#include "core/script_box.h"
#include "input/input.h"
#include "match/new_game.h"
#include "screens/clickable.h"
#include "screens/menu_system.h"
#include "screens/options.h"
#include "screens/screen_scene.h"

namespace {

// A match without a stage, with the first two pads, under which a test opens menus.
class MenusTest : public testing::Test {
 protected:
  void SetUp() override {
    scene.platform.ConnectPad(0, true);
    scene.platform.ConnectPad(1, true);
    NewGame();
    FinishStartUp();
    scene.Run(2);
    scene.TakeLog();
    scene.sounds.clear();
  }

  static const GameObject& Selected() {
    return *Objects().GetObject(Menus().GetCurrentMenu()->GetSelected()->objectId);
  }
  static std::string SelectedPicture() { return Selected().Get<Sprite>()->texturePath; }
  static std::vector<const GameObject*> Shown(std::string_view name) {
    std::vector<const GameObject*> found;
    for (const auto& object : Objects().GetObjects())
      if (object->alive && object->name == name) found.push_back(object.get());
    return found;
  }
  void Tilt(int slot, int axis, int value) {
    scene.platform.SetPadAxis(slot, axis, static_cast<std::int16_t>(value));
    scene.Run();
  }

  ScreenScene scene;
};

void IgnoreArgument(const void* /*argument*/) {}

}  // namespace

TEST_F(MenusTest, APadWalksToTheConfirmationAndBack) {
  const float now = Time().elapsedTime;
  scene.PressPad(0, Gamepad::kButtonStart);
  scene.PressPad(0, Gamepad::kButtonDown);
  EXPECT_EQ(SelectedPicture(), "Restart.png");
  scene.PressPad(0, Gamepad::kButtonA);
  EXPECT_EQ(scene.TakeLog(), "pause on; menu open pause; menu open confirm");
  EXPECT_EQ(SelectedPicture(), "Cancel.png");
  scene.PressPad(0, Gamepad::kButtonA);
  EXPECT_EQ(scene.TakeLog(), "menu close confirm");
  EXPECT_EQ(SelectedPicture(), "Restart.png");
  EXPECT_EQ(scene.sounds, (std::vector<std::string>{"sound 24", "sound 24", "sound 24", "sound 8", "sound 8"}));
  EXPECT_EQ(Time().elapsedTime, now);
  scene.PressPad(1, Gamepad::kButtonStart);
  EXPECT_EQ(scene.TakeLog(), "menu close pause; pause off");
}

TEST_F(MenusTest, EveryMenuLiesInFrontOfTheOneBeneath) {
  const std::size_t before = Objects().GetObjects().size();
  OpenPauseMenu();
  scene.Run();
  EXPECT_EQ(Shown("menubackground")[0]->GetTransform().position.z, 1.0f);
  EXPECT_EQ(Shown("menubackground")[0]->GetTransform().graphicsScale, (Vec3{12.0f, 16.0f, 0.0f}));
  EXPECT_EQ(Selected().GetTransform().position, (Vec3{0.0f, 6.0f, 2.5f}));
  EXPECT_EQ(Selected().Get<Sprite>()->shaderName, "fisheye");
  EXPECT_EQ(Selected().Get<Sprite>()->r, 0.0f);
  OpenOptionsMenu();
  scene.Run();
  EXPECT_EQ(Shown("menubackground")[1]->GetTransform().position.z, 3.0f);
  EXPECT_EQ(Selected().GetTransform().position, (Vec3{2.0f, 4.0f, 3.5f}));
  EXPECT_EQ(Shown("menu label").size(), 3u);
  OpenPictureMenu("creditslevel");
  scene.Run();
  EXPECT_EQ(Shown("creditslevel")[0]->GetTransform().position.z, 4.0f);
  EXPECT_EQ(Objects().GetObjects().back().get(), &Selected()) << "drawn last";
  CloseAllMenus();
  scene.Run();
  EXPECT_EQ(Objects().GetObjects().size(), before);
  EXPECT_FALSE(IsPaused());
  EXPECT_EQ(Menus().menuDepth, 1.0f);
  CloseTopMenu();
  EXPECT_EQ(Menus().menuDepth, 1.0f) << "there was nothing to close";
}

TEST_F(MenusTest, KeysAndDPadGoAroundTheEnds) {
  OpenPauseMenu();
  for (const int key : {SDLK_w, SDLK_a, SDLK_UP, SDLK_LEFT}) scene.Press(key);
  EXPECT_EQ(SelectedPicture(), "HowToPlay.png");
  for (const int button : {Gamepad::kButtonUp, Gamepad::kButtonLeft, Gamepad::kButtonLeft}) scene.PressPad(1, button);
  EXPECT_EQ(SelectedPicture(), "QuitGame.png");
  for (const int button : {Gamepad::kButtonRight, Gamepad::kButtonDown}) scene.PressPad(0, button);
  EXPECT_EQ(SelectedPicture(), "Restart.png");
  for (const int key : {SDLK_s, SDLK_d, SDLK_DOWN, SDLK_RIGHT, SDLK_RIGHT}) scene.Press(key);
  EXPECT_EQ(SelectedPicture(), "Resume.png");
  EXPECT_EQ(Shown("menu button").size(), 6u);
  for (const GameObject* button : Shown("menu button"))
    EXPECT_EQ(button->Get<Sprite>()->shaderName, button == &Selected() ? "fisheye" : "default");
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

TEST_F(MenusTest, ConfirmedRestartAndQuit) {
  for (const int key : {SDLK_ESCAPE, SDLK_DOWN, SDLK_RETURN, SDLK_LEFT, SDLK_RETURN}) scene.Press(key);
  const std::string words = scene.TakeLog();
  EXPECT_EQ(words.substr(0, words.find("; music")),
            "pause on; menu open pause; menu open confirm; screen game; "
            "menu close confirm; menu close pause; pause off");
  EXPECT_TRUE(Shown("menu button").empty());
  for (const int key : {SDLK_ESCAPE, SDLK_UP, SDLK_SPACE, SDLK_UP}) scene.Press(key);
  EXPECT_TRUE(scene.platform.running);
  scene.Press(SDLK_SPACE);
  EXPECT_FALSE(scene.platform.running);
}

TEST_F(MenusTest, OptionsShowAndHoldTheirState) {
  OpenPauseMenu();
  OpenOptionsMenu();
  const auto toggle = [&] { scene.Press(SDLK_RETURN); };
  EXPECT_EQ(SelectedPicture(), "Unmuted.png");
  toggle();
  EXPECT_EQ(SelectedPicture(), "Muted.png");
  scene.Press(SDLK_s);
  toggle();
  EXPECT_TRUE(GetOptions().allMuted);
  toggle();
  EXPECT_EQ(SelectedPicture(), "Unmuted.png");
  EXPECT_TRUE(GetOptions().musicMuted) << "all sound back leaves the music off";
  scene.Press(SDLK_s);
  EXPECT_EQ(SelectedPicture(), "Fullscreen.png");
  toggle();
  EXPECT_EQ(SelectedPicture(), "Windowed.png");
  EXPECT_FALSE(scene.platform.IsFullscreen());
  CloseTopMenu();
  OpenOptionsMenu();
  EXPECT_EQ(SelectedPicture(), "Muted.png");
}

TEST_F(MenusTest, AHeldEscapeCountsOnce) {
  for (int i = 0; i < 20; ++i) {
    scene.SetKey(SDLK_ESCAPE, true);
    scene.Run();
  }
  EXPECT_EQ(scene.TakeLog(), "pause on; menu open pause");
}

TEST_F(MenusTest, StartOpensNothingWithoutAMatchAndEscapeDoes) {
  EndMatch();
  scene.PressPad(0, Gamepad::kButtonStart);
  EXPECT_FALSE(Menus().IsOpen());
  scene.Press(SDLK_ESCAPE);
  EXPECT_TRUE(Menus().IsOpen());
}

// Whatever order menus are opened in, the game goes on when the last one is closed.
TEST_F(MenusTest, ThePauseIsAskedForOnce) {
  OpenEndMenu();
  OpenEndMenu();
  OpenPauseMenu();
  EXPECT_EQ(scene.TakeLog(), "pause on; menu open end; music stop; menu open end; music stop; menu open pause");
  CloseAllMenus();
  EXPECT_FALSE(IsPaused());
}

TEST_F(MenusTest, WorkWithoutTheirFilesAndWithoutButtons) {
  std::filesystem::remove("menubackground");
  scene.world.Restart();
  OpenPauseMenu();
  scene.Press(SDLK_DOWN);
  EXPECT_EQ(SelectedPicture(), "Restart.png");
  OpenPictureMenu("no such page");
  scene.Press(SDLK_RETURN);
  EXPECT_EQ(SelectedPicture(), "Restart.png");
  Menus().Push(std::make_unique<Menu>("empty", "menubackground", 9.0f));
  for (const int key : {SDLK_DOWN, SDLK_UP, SDLK_RETURN}) scene.Press(key);
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
  meet(scene.world.Add("other"));
  EXPECT_FALSE(clickable.hovered);
  meet(Objects().GetCursor());
  EXPECT_EQ(thing.GetTransform().graphicsScale, (Vec3{1.2f, 1.2f, 0.0f}));
  thing.Update(0.1f);
  EXPECT_EQ(thing.GetTransform().graphicsScale, (Vec3{1.2f, 1.2f, 0.0f}));
  thing.Update(0.1f);
  EXPECT_EQ(thing.GetTransform().graphicsScale, (Vec3{1.0f, 1.0f, 0.0f}));
  EXPECT_EQ(clicks, 0);
  SDL_Event down{};
  down.type = SDL_MOUSEBUTTONDOWN;
  down.button.button = SDL_BUTTON_LEFT;
  Input::TrackMouseEvent(down);
  meet(Objects().GetCursor());
  thing.Update(0.1f);
  thing.Update(0.1f);
  EXPECT_EQ(clicks, 1);
  SendEvent("thing", Event("click"));
  SendEvent("thing", Event("clack"));
  thing.Update(0.1f);
  EXPECT_EQ(clicks, 2);
}
