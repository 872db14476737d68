#include "input/mouse_component.h"

#include "core/game_object.h"
#include "core/selection.h"
#include "core/transform.h"
#include "input/input.h"

MouseComponent::MouseComponent() { Input::EnableMouse(); }

void MouseComponent::Update(float /*step*/) {
  Vec3& position = owner->GetTransform().position;
  position.x = Input::GetPointer().worldX;
  position.y = Input::GetPointer().worldY;
}

void MouseComponent::OnCollision(const CollisionPair& pair) {
  if (!Input::IsMouseButtonTriggered(Input::MouseButton::kLeft)) return;
  // Both Shift keys extend: a hand on the keyboard's right half has no other.
  if (!Input::IsKeyDown("shift") && !Input::IsKeyDown("rshift")) ClearSelection();
  AddToSelection((pair.self == owner ? pair.other : pair.self)->id);
}
