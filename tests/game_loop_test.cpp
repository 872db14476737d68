// The real platform without a display: SDL's virtual gamepad drives the same main loop as the game.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "core/object_manager.h"
#include "core/scripted_platform.h"
#include "core/system.h"
#include "frame.h"
#include "game_events.h"
#include "input/gamepad.h"
#include "match/new_game.h"
#include "match/players.h"
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
    device_ = SDL_JoystickAttachVirtualEx(&description);
    handle_ = SDL_JoystickOpen(device_);
  }
  VirtualPad(const VirtualPad&) = delete;
  VirtualPad& operator=(const VirtualPad&) = delete;
  ~VirtualPad() {
    SDL_JoystickClose(handle_);
    SDL_JoystickDetachVirtual(device_);
  }
  void SetAxis(int axis, std::int16_t value) { SDL_JoystickSetVirtualAxis(handle_, axis, value); }
  bool IsAttached() const { return device_ >= 0 && handle_ != nullptr; }

 private:
  int device_ = -1;
  SDL_Joystick* handle_ = nullptr;
};

}  // namespace

TEST(System, AVirtualGamepadChargesAndLaunchesThePlayerOfItsSlot) {
  ::setenv("SDL_VIDEODRIVER", "dummy", 1);
  SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
  TestWorld world;
  std::filesystem::current_path(BRINEWHIRL_BUILD_DIR);
  System system;
  SetPlatform(system);
  system.Init([]() -> const char* { return nullptr; });
  {
    VirtualPad pad;
    ASSERT_TRUE(pad.IsAttached()) << SDL_GetError();
    pad.SetAxis(SDL_CONTROLLER_AXIS_TRIGGERLEFT, -32768);
    pad.SetAxis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, -32768);
    SetDemoMode(false);
    NewGame();
    GameEvents events;
    Frame frame(events);
    const auto run = [&](int frames) {
      for (int i = 0; i < frames; ++i) frame.Run();
    };
    run(3);  // the device event opens the slot
    ASSERT_TRUE(Input::GetGamepad(0).IsConnected());
    EXPECT_FALSE(Input::GetGamepad(0).IsTriggerHeld());
    pad.SetAxis(SDL_CONTROLLER_AXIS_LEFTX, -32767);
    pad.SetAxis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, 32767);
    run(10);
    EXPECT_TRUE(Input::GetGamepad(0).IsTriggerHeld());
    pad.SetAxis(SDL_CONTROLLER_AXIS_TRIGGERRIGHT, -32768);
    run(3);
    EXPECT_LT(BodyOf(*Objects().FindObjectByName("Player1")).velocity.x, -1.0f);
  }
  system.Shutdown();
  static ScriptedPlatform nothing;
  SetPlatform(nothing);
}

TEST(System, SleepsAwayWhatIsLeftOfAFrame) {
  EXPECT_EQ(FrameRest(5, 60), 11u);
  EXPECT_EQ(FrameRest(20, 60), 0u);
  EXPECT_EQ(FrameRest(17, 60), 0u);
  EXPECT_EQ(FrameRest(5, 0), 0u);
}
