#include "screens/clickable.h"

#include "core/event.h"
#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/transform.h"
#include "input/input.h"
#include "input/mouse_component.h"

namespace {
constexpr Vec3 kHoveredScale = {1.2f, 1.2f, 0.0f};
constexpr Vec3 kPlainScale = {1.0f, 1.0f, 0.0f};
}  // namespace

void Clickable::Update(float /*step*/) {
  if (!hovered) owner->GetTransform().graphicsScale = kPlainScale;
  hovered = false;
  if (!clicked) return;
  if (onClick != nullptr) onClick(argument);
  clicked = false;
}

void Clickable::HandleEvent(const Event& event) {
  if (event.name == "click") clicked = true;
}

void Clickable::OnCollision(const CollisionPair& pair) {
  const GameObject* other = pair.self == owner ? pair.other : pair.self;
  if (other->Get<MouseComponent>() == nullptr) return;
  owner->GetTransform().graphicsScale = kHoveredScale;
  hovered = true;
  if (Input::IsLeftClicked()) clicked = true;
}

void Clickable::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("Clickable");
  bar.Add("clicked", &clicked);
  bar.Add("hovered", &hovered);
  bar.EndGroup();
}
