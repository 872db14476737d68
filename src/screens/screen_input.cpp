#include "screens/screen_input.h"

#include "input/gamepad.h"
#include "input/input.h"

bool IsContinueHeld(int slot) {
  const Gamepad& pad = Input::GetGamepad(slot);
  return pad.IsButtonDown(Gamepad::kButtonA) || pad.IsButtonDown(Gamepad::kButtonStart);
}

bool IsContinueTriggered(int slot) {
  const Gamepad& pad = Input::GetGamepad(slot);
  return pad.IsButtonTriggered(Gamepad::kButtonA) || pad.IsButtonTriggered(Gamepad::kButtonStart);
}

bool IsContinueKeyHeld() { return Input::IsLetterDown('a') || Input::IsKeyDown("enter") || Input::IsKeyDown("space"); }

bool IsContinueKeyTriggered() {
  return Input::IsLetterTriggered('a') || Input::IsKeyTriggered("enter") || Input::IsKeyTriggered("space");
}

bool IsSkipRequested() {
  return IsContinueHeld(0) || IsContinueKeyHeld() || Input::IsKeyDown("esc") || Input::IsLeftClicked() ||
         Input::IsRightClicked();
}
