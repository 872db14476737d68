#include "screens/menu_sticks.h"

#include "input/gamepad.h"
#include "input/input.h"

namespace {

using Move = MenuSticks::Move;

constexpr float kStickMove = 0.5f;  // of the full way

bool IsPrevious(const StickPosition& stick) { return stick.y > kStickMove || stick.x < -kStickMove; }
bool IsNext(const StickPosition& stick) { return stick.y < -kStickMove || stick.x > kStickMove; }

// Where both point in different directions "next" counts.
Move MoveOf(int slot) {
  const Gamepad& pad = Input::GetGamepad(slot);
  const StickPosition left = pad.LeftStick();
  const StickPosition right = pad.RightStick();
  if (IsNext(left) || IsNext(right)) return Move::kNext;
  if (IsPrevious(left) || IsPrevious(right)) return Move::kPrevious;
  return Move::kNone;
}

}  // namespace

void MenuSticks::Begin() {
  for (int slot = 0; slot < kGamepadSlots; ++slot)
    stickReleased_[static_cast<std::size_t>(slot)] = MoveOf(slot) == Move::kNone;
}

Move MenuSticks::Take(int slot) {
  const Move move = MoveOf(slot);
  bool& released = stickReleased_[static_cast<std::size_t>(slot)];
  const bool counts = released && move != Move::kNone;
  released = move == Move::kNone;
  return counts ? move : Move::kNone;
}
