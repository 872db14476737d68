#include "editor/stage/frame_select.h"

#include <algorithm>

#include "core/object_manager.h"
#include "core/pause.h"
#include "core/selection.h"
#include "input/input.h"

namespace {

constexpr float kSlack = 0.1f;  // world units that the mouse may tremble in a click

Vec3 MousePlace() { return {Input::GetPointer().worldX, Input::GetPointer().worldY, 0.0f}; }

bool Holds(const Bounds& frame, const Bounds& object) {
  return frame.left <= object.left && object.right <= frame.right && frame.bottom <= object.bottom &&
         object.top <= frame.top;
}

}  // namespace

std::optional<Bounds> FrameSelect::GetFrame() const {
  const Vec3 mouse = MousePlace();
  if (!framing_ || Length(mouse - start_) <= kSlack) return std::nullopt;
  return Bounds{std::min(start_.x, mouse.x), std::max(start_.x, mouse.x), std::min(start_.y, mouse.y),
                std::max(start_.y, mouse.y)};
}

void FrameSelect::Update(bool busy) {
  const bool held = Input::IsMouseButtonDown(Input::MouseButton::kLeft);
  if (pressed_) framing_ = held && CountPicks() == picks_;
  pressed_ = false;
  if (busy || IsPausedByGame()) framing_ = false;
  if (framing_ && !held) {
    Select();
    framing_ = false;
  }
  if (busy || IsPausedByGame() || !Input::IsMouseButtonTriggered(Input::MouseButton::kLeft)) return;
  pressed_ = true;
  picks_ = CountPicks();
  start_ = MousePlace();
}

void FrameSelect::Select() const {
  const auto frame = GetFrame();
  if (!frame) return;
  std::vector<std::uint32_t> inside;
  if (Input::IsKeyDown("shift") || Input::IsKeyDown("rshift")) inside = GetSelection();
  for (const auto& object : Objects().GetObjects()) {
    if (object->core || !object->alive || !Holds(*frame, BoundsOf(*object))) continue;
    if (std::find(inside.begin(), inside.end(), object->id) == inside.end()) inside.push_back(object->id);
  }
  SetSelection(inside);
}
