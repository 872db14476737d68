#include "input/input.h"

#include <gtest/gtest.h>

#include <limits>

#include "core/scripted_platform.h"
#include "input/gamepad.h"
#include "test_world.h"

namespace {

SDL_Event Click(Uint8 button, bool down) {
  SDL_Event event{};
  event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
  event.button.button = button;
  return event;
}

class InputTest : public testing::Test {
 protected:
  void SetUp() override { Input::Reset(); }
  void TearDown() override { Input::Reset(); }
};

TEST_F(InputTest, AKeyIsTriggeredInTheFrameOfItsPressOnly) {
  Input::BeginFrame();
  Input::SetKey(SDLK_RETURN, true);
  Input::SetKey(SDLK_z, true);
  EXPECT_TRUE(Input::IsKeyTriggered("enter"));
  EXPECT_TRUE(Input::IsLetterTriggered('z'));
  for (int frame = 0; frame < 3; ++frame) {
    Input::BeginFrame();
    Input::SetKey(SDLK_RETURN, true);  // repeats
    EXPECT_TRUE(Input::IsKeyDown("enter"));
    EXPECT_FALSE(Input::IsKeyTriggered("enter"));
    EXPECT_TRUE(Input::IsLetterDown('z'));
    EXPECT_FALSE(Input::IsLetterTriggered('z'));
  }
  Input::BeginFrame();
  Input::SetKey(SDLK_RETURN, false);
  EXPECT_FALSE(Input::IsKeyDown("enter"));
  Input::SetKey(SDLK_RETURN, true);
  EXPECT_FALSE(Input::IsKeyTriggered("enter")) << "edges compare with the start of the frame";
}

TEST_F(InputTest, APressAndReleaseWithinAFrameIsInvisible) {
  Input::BeginFrame();
  Input::SetKey(SDLK_ESCAPE, true);
  Input::SetKey(SDLK_ESCAPE, false);
  EXPECT_FALSE(Input::IsKeyTriggered("esc"));
}

TEST_F(InputTest, KnowsItsKeysAndIgnoresAllOthers) {
  Input::SetKey(SDLK_RSHIFT, true);
  EXPECT_FALSE(Input::IsKeyDown("shift")) << "the left one only";
  EXPECT_TRUE(Input::IsKeyDown("rshift"));
  for (const int key : {0, -1, static_cast<int>(SDLK_F1), static_cast<int>('0'), static_cast<int>('{'),
                        std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
    Input::SetKey(key, true);
  for (const char* name : {"", "f1", "Shift", "shift"}) EXPECT_FALSE(Input::IsKeyDown(name)) << name;
  for (const char letter : {'A', '`', '{', '\0', '0'}) EXPECT_FALSE(Input::IsLetterDown(letter)) << letter;
  for (char letter = 'a'; letter <= 'z'; ++letter) EXPECT_FALSE(Input::IsLetterDown(letter)) << letter;
  EXPECT_EQ(Input::KeyCodeFromName("arrowkeyup"), SDLK_UP);
  EXPECT_EQ(Input::KeyCodeFromName("p"), SDLK_p);
  for (const char* name : {"", "P", "pp", "up", "7"}) EXPECT_EQ(Input::KeyCodeFromName(name), SDLK_UNKNOWN) << name;
}

TEST_F(InputTest, BindingsRunInOrderAtEveryKeyDown) {
  std::string heard;
  Input::BindKeyDown(SDLK_p, [&] {
    heard += 'a';
    if (heard.size() > 1) return;
    for (int key = 0; key < 50; ++key) Input::BindKeyDown(1000 + key, [] {});  // moves the table while it runs
    Input::BindKeyDown(SDLK_p, [&] { heard += 'c'; });
  });
  Input::BindKeyDown(SDLK_p, [&] { heard += 'b'; });
  Input::BindKeyDown(SDLK_q, [&] { heard += 'q'; });
  Input::RunKeyDownBindings(SDLK_p);
  EXPECT_EQ(heard, "ab");
  Input::RunKeyDownBindings(SDLK_p);
  EXPECT_EQ(heard, "ababc");
  Input::RunKeyUpBindings(SDLK_p);
  Input::RunKeyDownBindings(SDLK_r);
  EXPECT_EQ(heard, "ababc");
}

TEST_F(InputTest, AClickCountsInItsFrameUnlessItEndsThere) {
  Input::TrackMouseEvent(Click(SDL_BUTTON_LEFT, true));
  Input::EndMouseFrame();
  EXPECT_TRUE(Input::IsLeftClicked());
  EXPECT_FALSE(Input::IsRightClicked());
  SDL_Event motion{};
  motion.type = SDL_MOUSEMOTION;
  Input::TrackMouseEvent(motion);
  Input::EndMouseFrame();
  EXPECT_FALSE(Input::IsLeftClicked());
  Input::TrackMouseEvent(Click(SDL_BUTTON_LEFT, false));
  Input::TrackMouseEvent(Click(SDL_BUTTON_X1, true));
  Input::EndMouseFrame();
  EXPECT_FALSE(Input::IsLeftClicked());

  Input::TrackMouseEvent(Click(SDL_BUTTON_RIGHT, true));
  Input::TrackMouseEvent(Click(SDL_BUTTON_LEFT, true));
  Input::TrackMouseEvent(Click(SDL_BUTTON_LEFT, false));
  Input::EndMouseFrame();
  EXPECT_FALSE(Input::IsLeftClicked()) << "down and up in one frame";
  EXPECT_TRUE(Input::IsRightClicked());
}

TEST_F(InputTest, CursorButtonsCountOnlyOnceEnabled) {
  using Input::MouseButton;
  Input::SetMouseButton(MouseButton::kLeft, true, 1.0f, 2.0f);
  EXPECT_FALSE(Input::IsMouseButtonTriggered(MouseButton::kLeft));
  Input::EnableMouse();
  Input::SetMouseButton(MouseButton::kMiddle, true, 1.0f, 2.0f);
  EXPECT_TRUE(Input::IsMouseButtonTriggered(MouseButton::kMiddle));
  EXPECT_FALSE(Input::IsMouseButtonTriggered(MouseButton::kLeft));
  Input::BeginMouseFrame();
  EXPECT_FALSE(Input::IsMouseButtonTriggered(MouseButton::kMiddle));
}

// A pad in slot 1 of a platform that the test drives; the platform before is not ours to know, so this one stays.
class GamepadTest : public testing::Test {
 protected:
  void SetUp() override {
    static ScriptedPlatform shared;
    shared = {};
    platform_ = &shared;
    SetPlatform(shared);
    pad_.index = 1;
  }
  StickPosition Left(int x, int y) {
    platform_->SetPadAxis(1, 0, static_cast<std::int16_t>(x));
    platform_->SetPadAxis(1, 1, static_cast<std::int16_t>(y));
    pad_.UpdateAxes();
    return pad_.LeftStick();
  }
  ScriptedPlatform* platform_ = nullptr;
  Gamepad pad_;
};

TEST_F(GamepadTest, EachAxisHasADeadZoneOfItsOwn) {
  platform_->ConnectPad(1, true);
  Input::ReopenGamepads();
  EXPECT_TRUE(pad_.IsConnected());
  EXPECT_EQ(Left(2000, -2000).x, 0.0f);
  EXPECT_EQ(pad_.LeftStick().y, 0.0f);
  EXPECT_FLOAT_EQ(Left(2001, 2001).x, 1.0f / 30767.0f);
  EXPECT_FLOAT_EQ(pad_.LeftStick().y, -1.0f / 30767.0f);
  EXPECT_EQ(Left(32767, 32767).x, 1.0f);
  EXPECT_EQ(pad_.LeftStick().y, -1.0f) << "down";
  EXPECT_FLOAT_EQ(Left(-32768, -32768).x, -1.0000325f);
  EXPECT_FLOAT_EQ(pad_.LeftStick().y, 1.0000325f);
  EXPECT_EQ(pad_.RightStick().x, 0.0f);
}

TEST_F(GamepadTest, TheTriggerNeedsMoreThanHalfTheWayAndHasNoDeadZone) {
  platform_->ConnectPad(1, true);
  Input::ReopenGamepads();
  const auto held = [&](int raw) {
    platform_->SetPadAxis(1, Gamepad::kRightTrigger, static_cast<std::int16_t>(raw));
    pad_.UpdateAxes();
    return pad_.IsTriggerHeld();
  };
  pad_.UpdateAxes();
  EXPECT_FALSE(pad_.IsTriggerHeld()) << "at rest";
  EXPECT_FALSE(held(15383));
  EXPECT_TRUE(held(15384));
  EXPECT_TRUE(held(32767));
}

TEST_F(GamepadTest, AnEmptySlotReadsAsNothing) {
  platform_->ConnectPad(0, true);
  platform_->SetPadButton(0, Gamepad::kButtonA, true);
  platform_->SetPadAxis(1, 0, 32767);
  Input::ReopenGamepads();
  pad_.UpdateButtons();
  pad_.UpdateAxes();
  EXPECT_FALSE(pad_.IsConnected());
  EXPECT_FALSE(pad_.IsTriggerHeld());
  EXPECT_EQ(pad_.LeftStick().x, 0.0f);
  pad_.index = 0;
  pad_.UpdateButtons();
  EXPECT_TRUE(pad_.IsButtonDown(Gamepad::kButtonA));
  for (const int button : {-1, 9, 16, 1000}) EXPECT_FALSE(pad_.IsButtonDown(button)) << button;
  EXPECT_EQ(platform_->GetJoystickCount(), 1);
}

}  // namespace
