// The real platform without a display: SDL's virtual gamepad drives the same main loop as the game.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>

#include "build_world.h"
#include "core/script_box.h"
#include "core/system.h"
#include "folders.h"
#include "input/gamepad.h"
#include "screens/logo_screen_script.h"
#include "scripted_scene.h"

namespace {

class VirtualPad {
 public:
  VirtualPad() {
    SDL_VirtualJoystickDesc description{};
    description.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
    description.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER;
    description.naxes = SDL_CONTROLLER_AXIS_MAX;
    description.nbuttons = SDL_CONTROLLER_BUTTON_MAX;
    description.name = "Virtual pad";
    handle_ = SDL_JoystickOpen(SDL_JoystickAttachVirtualEx(&description));
    id_ = SDL_JoystickInstanceID(handle_);
  }
  VirtualPad(const VirtualPad&) = delete;
  VirtualPad& operator=(const VirtualPad&) = delete;
  ~VirtualPad() {
    LetGo();
    int device = 0;
    while (device < SDL_NumJoysticks() && SDL_JoystickGetDeviceInstanceID(device) != id_) ++device;
    SDL_JoystickDetachVirtual(device);
  }
  /// What is held stays so; only the game has the device open from now on.
  void LetGo() {
    if (handle_ != nullptr) SDL_JoystickClose(std::exchange(handle_, nullptr));
  }
  void SetAxis(SDL_GameControllerAxis axis, std::int16_t value) { SDL_JoystickSetVirtualAxis(handle_, axis, value); }
  void SetButton(SDL_GameControllerButton button, bool down) {
    SDL_JoystickSetVirtualButton(handle_, button, down ? 1 : 0);
  }

 private:
  SDL_Joystick* handle_ = nullptr;
  SDL_JoystickID id_ = -1;
};

// The program's own platform, without a display, in the folder of what ships; keeps the run's screens and menus.
class SystemTest : public ScriptedScene, public ::testing::Test {
 public:
  using ScriptedScene::Run;

  SystemTest() {
    ::setenv("SDL_VIDEODRIVER", "dummy", 1);
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    std::filesystem::current_path(BuildFolder());
    SetPlatform(system);
    system.Init([] { return GlReport{}; });
  }
  ~SystemTest() override {
    system.Shutdown();
    SetPlatform(platform);
  }
  void OnEvent(std::string_view event) override {
    if (event.starts_with("screen ") || event.starts_with("menu ")) words += std::string(event) + ";";
  }

  System system;
  std::string words;
};

constexpr auto kA = SDL_CONTROLLER_BUTTON_A;
constexpr auto kStart = SDL_CONTROLLER_BUTTON_START;
constexpr auto kDown = SDL_CONTROLLER_BUTTON_DPAD_DOWN;
constexpr auto kUp = SDL_CONTROLLER_BUTTON_DPAD_UP;
constexpr auto kTrigger = SDL_CONTROLLER_AXIS_TRIGGERRIGHT;
constexpr std::int16_t kPulled = 32767;
constexpr std::int16_t kLetGo = -32768;

}  // namespace

// A pad that is closed in between reports its button anew; many report nothing until it changes.
TEST_F(SystemTest, PadsThatAreOpenedAgainAreNotClosedInBetween) {
  auto first = std::make_unique<VirtualPad>();
  VirtualPad second;
  const auto openAll = [&] {
    for (int slot = 0; slot < kGamepadSlots; ++slot) system.OpenGamepad(slot);
  };
  openAll();
  second.SetButton(kA, true);
  SDL_PumpEvents();
  second.LetGo();
  SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
  openAll();
  EXPECT_TRUE(system.GetGamepadButton(1, Gamepad::kButtonA));
  first.reset();
  openAll();
  EXPECT_TRUE(system.GetGamepadButton(0, Gamepad::kButtonA)) << "it has moved up";
  EXPECT_FALSE(system.IsGamepadConnected(1));
  EXPECT_EQ(SDL_HasEvent(SDL_JOYBUTTONDOWN), SDL_FALSE);
}

// Every pad takes a turn: the first goes past the screens and flies its player, the others through the menus.
TEST_F(SystemTest, FourVirtualGamepadsGoThroughEveryScreenAndMenu) {
  std::array<VirtualPad, kGamepadSlots> pads;
  BindKeys();
  CreateLogoScreen();
  const auto press = [&](std::size_t pad, std::initializer_list<SDL_GameControllerButton> buttons) {
    for (const SDL_GameControllerButton button : buttons)
      for (const bool down : {true, false}) {
        pads[pad].SetButton(button, down);
        Run(2);
      }
  };
  const auto expect = [&](const std::string& expected) { EXPECT_EQ(std::exchange(words, ""), expected); };
  for (const auto axis : {SDL_CONTROLLER_AXIS_TRIGGERLEFT, kTrigger}) pads[0].SetAxis(axis, kLetGo);
  Run(177);
  press(0, {kStart});
  expect("screen logo;screen notice;screen title;");
  press(3, {kA});
  expect("screen game;");
  pads[0].SetAxis(SDL_CONTROLLER_AXIS_LEFTX, -kPulled);
  for (const bool pulled : {false, true, false}) {
    pads[0].SetAxis(kTrigger, pulled ? kPulled : kLetGo);
    Run(10);
    EXPECT_EQ(Input::GetGamepad(0).IsTriggerHeld(), pulled);
  }
  EXPECT_LT(BodyOf(*Objects().FindObjectByName("Player1")).velocity.x, -1.0f);
  pads[0].SetAxis(SDL_CONTROLLER_AXIS_LEFTX, 0);
  press(1, {kStart});
  press(2, {kDown, kA});
  press(3, {kA});
  expect("menu open pause;menu open confirm;menu close confirm;");
  press(2, {kDown, kA, kA, kDown, kA, kDown, kA, kA, kDown, kDown, kA});
  expect("menu open picture;menu close picture;menu open options;menu close options;");
  press(3, {kDown, kA});
  press(0, {kStart, kStart});
  expect("menu open picture;menu close picture;menu close pause;");
  Objects().FindObjectByName("segmentmanager")->alive = false;
  world.Add("podium").Insert(std::make_unique<ScriptBox>()).AddScript("wsl");
  Run(600);
  expect("screen finish;screen podium;");
  press(0, {kA});
  press(2, {kStart});
  press(1, {kA});
  expect("menu open end;screen game;menu close end;");
  press(3, {kStart, kUp});
  press(1, {kA, kUp, kA});
  expect("menu open pause;menu open confirm;");
  EXPECT_FALSE(system.running);
}

TEST(System, SleepsAwayWhatIsLeftOfAFrame) {
  EXPECT_EQ(FrameRest(5, 60), 11u);
  for (const auto& [took, fps] : {std::pair{17u, 60u}, {20u, 60u}, {5u, 0u}}) EXPECT_EQ(FrameRest(took, fps), 0u);
}
