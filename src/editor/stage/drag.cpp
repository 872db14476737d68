#include "editor/stage/drag.h"

#include <algorithm>
#include <cmath>

#include "core/object_manager.h"
#include "core/selection.h"
#include "core/transform.h"
#include "editor/acts/history.h"
#include "editor/acts/object_shape.h"
#include "input/input.h"

namespace {

constexpr float kSlack = 0.1f;  // world units that the mouse may tremble in a click

Vec3 MousePlace() { return {Input::GetPointer().worldX, Input::GetPointer().worldY, 0.0f}; }

}  // namespace

void Drag::Stop(History& history) {
  picks_ = CountPicks();
  End(history);
  selection_ = GetSelection();
}

void Drag::End(History& history) {
  if (objectId_ == 0) return;
  objectId_ = 0;
  if (!moved_) return;
  const GameObject* only = before_.size() == 1 ? Objects().GetObject(before_.front().first) : nullptr;
  const std::string what = only == nullptr ? std::to_string(before_.size()) + " objects" : ShownNameOf(*only);
  const History::Group group(history, "the move of " + what);
  for (const auto& [id, before] : before_) {
    const GameObject* object = Objects().GetObject(id);
    if (object == nullptr) continue;
    Form after = before;
    after.position = object->GetTransform().position;
    history.RecordForm(id, before, after);
  }
}

void Drag::Update(History& history, const Grid& grid) {
  const bool held = Input::IsMouseButtonDown(Input::MouseButton::kLeft);
  if (CountPicks() != picks_) {
    picks_ = CountPicks();
    if (held) Begin();
  }
  if (held && Objects().GetObject(objectId_) != nullptr) {
    Move(grid);
  } else {
    End(history);
    selection_ = GetSelection();
  }
}

void Drag::Begin() {
  const GameObject* object = Objects().GetObject(GetLastSelected());
  if (object == nullptr) return;
  objectId_ = object->id;
  start_ = MousePlace();
  grip_ = object->GetTransform().position - start_;
  moved_ = false;
}

// A click on one of several selects it alone; only when the mouse moves on it was meant for all of them.
void Drag::TakeAll() {
  moved_ = true;
  if (std::find(selection_.begin(), selection_.end(), objectId_) != selection_.end() && GetSelection().size() == 1) {
    std::erase(selection_, objectId_);
    selection_.push_back(objectId_);
    SetSelection(selection_);
  }
  before_.clear();
  for (const GameObject* object : SelectedObjects()) before_.emplace_back(object->id, TakeForm(*object));
}

void Drag::Move(const Grid& grid) {
  const Vec3 mouse = MousePlace();
  if (!moved_ && Length(mouse - start_) <= kSlack) return;
  if (!moved_) TakeAll();
  const auto own =
      std::find_if(before_.begin(), before_.end(), [&](const auto& one) { return one.first == objectId_; });
  if (own == before_.end()) return;
  const Vec3 way = grid.Snapped(mouse + grip_) - own->second.position;
  for (const auto& [id, before] : before_) {
    GameObject* object = Objects().GetObject(id);
    if (object == nullptr) continue;
    object->GetTransform().position = before.position + Vec3{way.x, way.y, 0.0f};
    object->GetTransform().Rebuild();
  }
}
