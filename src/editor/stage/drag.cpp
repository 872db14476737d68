#include "editor/stage/drag.h"

#include <cmath>

#include "core/object_manager.h"
#include "core/selection.h"
#include "core/transform.h"
#include "editor/acts/history.h"
#include "input/input.h"

namespace {

constexpr float kSlack = 0.1f;  // world units that the mouse may tremble in a click
constexpr char kPath[] = "/Transform/position";

Vec3 MousePlace() { return {Input::GetPointer().worldX, Input::GetPointer().worldY, 0.0f}; }

float Snapped(float value) { return std::round(value / Drag::kGrid) * Drag::kGrid; }

}  // namespace

void Drag::Stop(History& history) {
  picks_ = CountPicks();
  End(history);
}

void Drag::End(History& history) {
  const GameObject* object = Objects().GetObject(objectId_);
  if (object != nullptr && moved_)
    history.RecordEdit(objectId_, kPath, before_, object->GetTransform().position, false);
  objectId_ = 0;
}

void Drag::Update(History& history) {
  const bool held = Input::IsMouseButtonDown(Input::MouseButton::kLeft);
  if (CountPicks() != picks_) {
    picks_ = CountPicks();
    if (held) Begin();
  }
  GameObject* object = Objects().GetObject(objectId_);
  if (held && object != nullptr)
    Move(*object);
  else
    End(history);
}

void Drag::Begin() {
  const GameObject* object = Objects().GetObject(GetLastSelected());
  if (object == nullptr) return;
  objectId_ = object->id;
  before_ = object->GetTransform().position;
  start_ = MousePlace();
  grip_ = before_ - start_;
  moved_ = false;
}

void Drag::Move(GameObject& object) {
  const Vec3 mouse = MousePlace();
  moved_ = moved_ || Length(mouse - start_) > kSlack;
  if (!moved_) return;
  Vec3 place = mouse + grip_;
  if (Input::IsKeyDown("ctrl") || Input::IsKeyDown("rctrl")) place = {Snapped(place.x), Snapped(place.y), place.z};
  object.GetTransform().position = place;
  object.GetTransform().Rebuild();
}
