// The real platform without a display: SDL's virtual gamepad drives the same main loop as the game.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
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
#include "match/new_game.h"
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
  void SetAxis(int axis, std::int16_t value) { SDL_JoystickSetVirtualAxis(handle_, axis, value); }
  void SetButton(SDL_GameControllerButton button, bool down) {
    SDL_JoystickSetVirtualButton(handle_, button, down ? 1 : 0);
  }
  bool IsAttached() const { return handle_ != nullptr; }

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

}  // namespace

TEST(System, AVirtualGamepadChargesAndLaunchesThePlayerOfItsSlot) {
  RealPlatform real;
  VirtualPad pad;
  ASSERT_TRUE(pad.IsAttached()) << SDL_GetError();
  pad.SetAxis(SDL_CONTROLLER_AXIS_TRIGGERLEFT, -32768);
  pad.SetAxis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, -32768);
  NewGame();
  real.Run(3);  // the device event opens the slot
  ASSERT_TRUE(Input::GetGamepad(0).IsConnected());
  EXPECT_FALSE(Input::GetGamepad(0).IsTriggerHeld());
  pad.SetAxis(SDL_CONTROLLER_AXIS_LEFTX, -32767);
  pad.SetAxis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, 32767);
  real.Run(10);
  EXPECT_TRUE(Input::GetGamepad(0).IsTriggerHeld());
  pad.SetAxis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, -32768);
  real.Run(3);
  EXPECT_LT(BodyOf(*Objects().FindObjectByName("Player1")).velocity.x, -1.0f);
}

// A pad that is closed in between reports its button anew; many report nothing until it changes.
TEST(System, PadsThatAreOpenedAgainAreNotClosedInBetween) {
  ::setenv("SDL_VIDEODRIVER", "dummy", 1);
  SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
  System system;
  system.Init([]() -> const char* { return nullptr; });
  {
    auto first = std::make_unique<VirtualPad>();
    VirtualPad second;
    const auto openAll = [&] {
      for (int slot = 0; slot < kGamepadSlots; ++slot) system.OpenGamepad(slot);
    };
    openAll();
    second.SetButton(SDL_CONTROLLER_BUTTON_A, true);
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
  system.Shutdown();
}

// Every pad takes a turn: the first goes past the screens, the others through the menus.
TEST(System, FourVirtualGamepadsGoThroughEveryScreenAndMenu) {
  RealPlatform real;
  Words words;
  std::array<VirtualPad, kGamepadSlots> pads;
  BindKeys();
  CreateLogoScreen();
  const auto press = [&](std::size_t pad, SDL_GameControllerButton button) {
    pads[pad].SetButton(button, true);
    real.Run(2);
    pads[pad].SetButton(button, false);
    real.Run(2);
  };
  const auto expect = [&](const std::string& expected) { EXPECT_EQ(std::exchange(words.text, ""), expected); };
  constexpr auto kA = SDL_CONTROLLER_BUTTON_A;
  constexpr auto kStart = SDL_CONTROLLER_BUTTON_START;
  constexpr auto kDown = SDL_CONTROLLER_BUTTON_DPAD_DOWN;
  constexpr auto kUp = SDL_CONTROLLER_BUTTON_DPAD_UP;
  real.Run(177);
  press(0, kStart);
  expect("screen logo;screen notice;screen title;");
  press(3, kA);
  expect("screen game;");
  press(1, kStart);
  press(2, kDown);
  press(2, kA);
  press(3, kA);
  expect("menu open pause;menu open confirm;menu close confirm;");
  for (const SDL_GameControllerButton button : {kDown, kA, kA, kDown, kA, kDown, kA, kA, kDown, kDown, kA})
    press(2, button);
  expect("menu open picture;menu close picture;menu open options;menu close options;");
  press(3, kDown);
  press(3, kA);
  press(0, kStart);
  press(0, kStart);
  expect("menu open picture;menu close picture;menu close pause;");
  Objects().FindObjectByName("segmentmanager")->alive = false;
  GameObject& podium = real.world.Add("podium");
  podium.Insert(std::make_unique<ScriptBox>()).AddScript("wsl");
  real.Run(600);
  expect("screen finish;screen podium;");
  press(0, kA);
  press(2, kStart);
  press(1, kA);
  expect("menu open end;screen game;menu close end;");
  press(3, kStart);
  press(3, kUp);
  press(1, kA);
  press(1, kUp);
  press(1, kA);
  expect("menu open pause;menu open confirm;");
  EXPECT_FALSE(real.system.running);
}

TEST(System, SleepsAwayWhatIsLeftOfAFrame) {
  EXPECT_EQ(FrameRest(5, 60), 11u);
  EXPECT_EQ(FrameRest(20, 60), 0u);
  EXPECT_EQ(FrameRest(17, 60), 0u);
  EXPECT_EQ(FrameRest(5, 0), 0u);
}
