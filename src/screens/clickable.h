// A thing that grows under the mouse and acts when it is clicked.
#pragma once

#include "core/script.h"

class Clickable final : public Script {
 public:
  void Update(float step) override;
  /// "click" counts as a click.
  void HandleEvent(const Event& event) override;
  /// Overlaps with the mouse cursor alone count.
  void OnCollision(const CollisionPair& pair) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "Clickable"; }

  bool clicked = false;  ///< since the last update
  bool hovered = false;
  const void* argument = nullptr;  ///< for onClick; not owned
  void (*onClick)(const void* argument) = nullptr;
};
