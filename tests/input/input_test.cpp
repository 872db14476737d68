#include "input/input.h"

#include <gtest/gtest.h>

#include <limits>

#include "core/scripted_platform.h"
#include "input/gamepad.h"

namespace {

class InputTest : public testing::Test {
 protected:
  InputTest() { Input::Reset(); }
  ~InputTest() override { Input::Reset(); }

  static void TrackClick(Uint8 button, bool down) {
    SDL_Event event{};
    event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    event.button.button = button;
    Input::TrackMouseEvent(event);
  }
};

TEST_F(InputTest, AKeyIsTriggeredInTheFrameOfItsPressOnly) {
  for (int frame = 0; frame < 3; ++frame) {
    Input::BeginFrame();
    for (const int key : {SDLK_RETURN, SDLK_z}) Input::SetKey(key, true);  // repeats after the first frame
    EXPECT_TRUE(Input::IsKeyDown("enter"));
    EXPECT_EQ(Input::IsKeyTriggered("enter"), frame == 0);
    EXPECT_EQ(Input::IsLetterTriggered('z'), frame == 0);
  }
  Input::BeginFrame();
  for (const bool down : {false, true}) {
    Input::SetKey(SDLK_RETURN, down);
    EXPECT_EQ(Input::IsKeyDown("enter"), down);
  }
  EXPECT_FALSE(Input::IsKeyTriggered("enter")) << "edges compare with the start of the frame";
}

TEST_F(InputTest, KnowsItsKeysAndIgnoresAllOthers) {
  for (const int key : {static_cast<int>(SDLK_RSHIFT), 0, -1, static_cast<int>(SDLK_F1), static_cast<int>('0'),
                        static_cast<int>('{'), std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
    Input::SetKey(key, true);
  EXPECT_TRUE(Input::IsKeyDown("rshift"));
  for (const char* name : {"", "f1", "Shift", "shift"}) EXPECT_FALSE(Input::IsKeyDown(name)) << name;
  for (int letter = 0; letter < 128; ++letter) EXPECT_FALSE(Input::IsLetterDown(static_cast<char>(letter))) << letter;
  EXPECT_EQ(Input::KeyCodeFromName("arrowkeyup"), SDLK_UP);
  EXPECT_EQ(Input::KeyCodeFromName("p"), SDLK_p);
  for (const char* name : {"", "P", "pp", "up", "7"}) EXPECT_EQ(Input::KeyCodeFromName(name), SDLK_UNKNOWN) << name;
}

TEST_F(InputTest, BindingsOfAKeyRunInOrder) {
  std::string heard;
  Input::BindKeyDown(SDLK_p, [&] {
    heard += 'a';
    if (heard.size() > 1) return;
    for (int key = 0; key < 50; ++key) Input::BindKeyDown(1000 + key, [] {});  // moves the table while it runs
    Input::BindKeyDown(SDLK_p, [&] { heard += 'c'; });
  });
  Input::BindKeyDown(SDLK_p, [&] { heard += 'b'; });
  Input::BindKeyDown(SDLK_q, [&] { heard += 'q'; });
  for (int presses = 2; presses > 0; --presses) Input::RunKeyDownBindings(SDLK_p);
  Input::RunKeyUpBindings(SDLK_p);
  EXPECT_EQ(heard, "ababc");
}

TEST_F(InputTest, AClickCountsInItsFrameUnlessItEndsThere) {
  TrackClick(SDL_BUTTON_LEFT, true);
  Input::EndMouseFrame();
  EXPECT_TRUE(Input::IsLeftClicked());
  EXPECT_FALSE(Input::IsRightClicked());
  SDL_Event motion{};
  motion.type = SDL_MOUSEMOTION;
  Input::TrackMouseEvent(motion);
  Input::EndMouseFrame();
  EXPECT_FALSE(Input::IsLeftClicked());
  TrackClick(SDL_BUTTON_LEFT, false);
  TrackClick(SDL_BUTTON_X1, true);
  Input::EndMouseFrame();
  TrackClick(SDL_BUTTON_LEFT, true);
  EXPECT_TRUE(Input::IsLeftClicked()) << "in the frame after its release";

  TrackClick(SDL_BUTTON_RIGHT, true);
  for (const bool down : {true, false}) TrackClick(SDL_BUTTON_LEFT, down);
  Input::EndMouseFrame();
  EXPECT_FALSE(Input::IsLeftClicked()) << "down and up in one frame";
  EXPECT_TRUE(Input::IsRightClicked());
}

TEST_F(InputTest, CursorButtonsCountOnlyOnceEnabled) {
  using Input::MouseButton;
  Input::SetMouseButton(MouseButton::kLeft, true, 1.0f, 2.0f);
  Input::EnableMouse();
  Input::SetMouseButton(MouseButton::kMiddle, true, 1.0f, 2.0f);
  EXPECT_TRUE(Input::IsMouseButtonTriggered(MouseButton::kMiddle));
  EXPECT_FALSE(Input::IsMouseButtonTriggered(MouseButton::kLeft));
  Input::BeginMouseFrame();
  EXPECT_FALSE(Input::IsMouseButtonTriggered(MouseButton::kMiddle));
}

TEST(Gamepad, ReadsTheAxesAndButtonsOfItsSlotOnly) {
  ScriptedPlatform platform;
  SetPlatform(platform);
  platform.ConnectPad(0, true);
  platform.SetPadButton(0, Gamepad::kButtonA, true);
  Input::ReopenGamepads();
  Gamepad pad;
  pad.index = 1;
  const auto setAxis = [&](int axis, int raw) {
    platform.SetPadAxis(1, axis, static_cast<std::int16_t>(raw));
    pad.UpdateAxes();
  };
  setAxis(0, 32767);
  pad.UpdateButtons();
  EXPECT_FALSE(pad.IsConnected());
  EXPECT_EQ(pad.LeftStick().x, 0.0f);
  EXPECT_FALSE(pad.IsButtonDown(Gamepad::kButtonA));

  platform.ConnectPad(1, true);
  Input::ReopenGamepads();
  EXPECT_TRUE(pad.IsConnected());
  const struct {
    int raw;
    float x;
  } cases[] = {{2000, 0.0f},  {-2000, 0.0f},        {2001, 1.0f / 30767.0f}, {-2001, -1.0f / 30767.0f},
               {32767, 1.0f}, {-32768, -1.0000325f}};
  for (const auto& [raw, x] : cases) {
    for (const int axis : {0, 1}) setAxis(axis, raw);
    EXPECT_FLOAT_EQ(pad.LeftStick().x, x) << raw;
    setAxis(0, 0);
    EXPECT_EQ(pad.LeftStick().x, 0.0f) << "each axis has a dead zone of its own";
    EXPECT_FLOAT_EQ(pad.LeftStick().y, -x) << raw << ": positive is down";
  }
  EXPECT_EQ(pad.RightStick().x, 0.0f);
  EXPECT_FALSE(pad.IsTriggerHeld()) << "at rest";
  for (const int raw : {15383, 15384, 32767}) {
    setAxis(Gamepad::kRightTrigger, raw);
    EXPECT_EQ(pad.IsTriggerHeld(), raw > 15383) << raw << ": more than half the way, without a dead zone";
  }
  pad.index = 0;
  pad.UpdateButtons();
  EXPECT_TRUE(pad.IsButtonDown(Gamepad::kButtonA));
  for (const int button : {-1, 9, 16, 1000}) EXPECT_FALSE(pad.IsButtonDown(button)) << button;
  static ScriptedPlatform nothing;
  SetPlatform(nothing);
}

}  // namespace
