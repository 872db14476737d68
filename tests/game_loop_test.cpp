// The real platform without a display: SDL's virtual gamepad drives the same main loop as the game.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>

#include "core/object_manager.h"
#include "core/run_log.h"
#include "core/script_box.h"
#include "core/scripted_platform.h"
#include "core/system.h"
#include "frame.h"
#include "game_events.h"
#include "input/gamepad.h"
#include "match/players.h"
#include "screens/start_up.h"
#include "startup.h"
#include "test_world.h"

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

// The program's own platform, without a display, in the folder of what ships.
class RealPlatform {
 public:
  RealPlatform() {
    ::setenv("SDL_VIDEODRIVER", "dummy", 1);
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    std::filesystem::current_path(BRINEWHIRL_BUILD_DIR);
    SetPlatform(system);
    system.Init([]() -> const char* { return nullptr; });
    SetDemoMode(false);
  }
  RealPlatform(const RealPlatform&) = delete;
  RealPlatform& operator=(const RealPlatform&) = delete;
  ~RealPlatform() {
    system.Shutdown();
    static ScriptedPlatform nothing;
    SetPlatform(nothing);
  }
  void Run(int frames) {
    for (int i = 0; i < frames; ++i) frame_.Run();
  }

  TestWorld world;
  System system;

 private:
  GameEvents events_;
  Frame frame_{events_};
};

// The screens and menus of a run.
class Words final : public RunLogListener {
 public:
  Words() { SetRunLogListener(this); }
  Words(const Words&) = delete;
  Words& operator=(const Words&) = delete;
  ~Words() override { SetRunLogListener(nullptr); }
  void OnEvent(std::string_view event) override {
    if (event.starts_with("screen ") || event.starts_with("menu ")) text += std::string(event) + ";";
  }
  std::string text;
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
TEST(System, PadsThatAreOpenedAgainAreNotClosedInBetween) {
  RealPlatform real;
  auto first = std::make_unique<VirtualPad>();
  VirtualPad second;
  const auto openAll = [&] {
    for (int slot = 0; slot < kGamepadSlots; ++slot) real.system.OpenGamepad(slot);
  };
  openAll();
  second.SetButton(kA, true);
  SDL_PumpEvents();
  second.LetGo();
  SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
  openAll();
  EXPECT_TRUE(real.system.GetGamepadButton(1, Gamepad::kButtonA));
  first.reset();
  openAll();
  EXPECT_TRUE(real.system.GetGamepadButton(0, Gamepad::kButtonA)) << "it has moved up";
  EXPECT_FALSE(real.system.IsGamepadConnected(1));
  EXPECT_EQ(SDL_HasEvent(SDL_JOYBUTTONDOWN), SDL_FALSE);
}

// Every pad takes a turn: the first goes past the screens and flies its player, the others go through the menus.
TEST(System, FourVirtualGamepadsGoThroughEveryScreenAndMenu) {
  RealPlatform real;
  Words words;
  std::array<VirtualPad, kGamepadSlots> pads;
  BindKeys();
  CreateLogoScreen();
  const auto press = [&](std::size_t pad, std::initializer_list<SDL_GameControllerButton> buttons) {
    for (const SDL_GameControllerButton button : buttons)
      for (const bool down : {true, false}) {
        pads[pad].SetButton(button, down);
        real.Run(2);
      }
  };
  const auto expect = [&](const std::string& expected) { EXPECT_EQ(std::exchange(words.text, ""), expected); };
  for (const auto axis : {SDL_CONTROLLER_AXIS_TRIGGERLEFT, kTrigger}) pads[0].SetAxis(axis, kLetGo);
  real.Run(177);
  press(0, {kStart});
  expect("screen logo;screen notice;screen title;");
  press(3, {kA});
  expect("screen game;");
  for (const bool pulled : {false, true}) {
    pads[0].SetAxis(kTrigger, pulled ? kPulled : kLetGo);
    pads[0].SetAxis(SDL_CONTROLLER_AXIS_LEFTX, -kPulled);
    real.Run(10);
    EXPECT_EQ(Input::GetGamepad(0).IsTriggerHeld(), pulled);
  }
  pads[0].SetAxis(kTrigger, kLetGo);
  real.Run(3);
  pads[0].SetAxis(SDL_CONTROLLER_AXIS_LEFTX, 0);
  EXPECT_LT(BodyOf(*Objects().FindObjectByName("Player1")).velocity.x, -1.0f);
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
  real.world.Add("podium").Insert(std::make_unique<ScriptBox>()).AddScript("wsl");
  real.Run(600);
  expect("screen finish;screen podium;");
  press(0, {kA});
  press(2, {kStart});
  press(1, {kA});
  expect("menu open end;screen game;menu close end;");
  press(3, {kStart, kUp});
  press(1, {kA, kUp, kA});
  expect("menu open pause;menu open confirm;");
  EXPECT_FALSE(real.system.running);
}

TEST(System, SleepsAwayWhatIsLeftOfAFrame) {
  EXPECT_EQ(FrameRest(5, 60), 11u);
  EXPECT_EQ(FrameRest(20, 60), 0u);
  EXPECT_EQ(FrameRest(17, 60), 0u);
  EXPECT_EQ(FrameRest(5, 0), 0u);
}
