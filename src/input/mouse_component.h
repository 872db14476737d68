// Makes the cursor object follow the mouse and pick what it touches. Only the cursor carries one.
#pragma once

#include "core/component.h"

class MouseComponent final : public Component {
 public:
  static constexpr Kind kKind = Kind::kMouseComponent;

  /// From now on mouse buttons count (see Input::EnableMouse).
  MouseComponent();

  /// Moves the owner to the mouse's place in the world; its depth stays.
  void Update(float step) override;
  /// Picks the other object when the left button went down this frame; Shift adds to what is picked already.
  void OnCollision(const CollisionPair& pair) override;
};
