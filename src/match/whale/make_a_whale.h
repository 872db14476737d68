// The whale: a great immovable body that swims through walls and leaves nothing breakable on the stage.
#pragma once

#include "core/script.h"

class GameObject;

/// Name of the whale's object.
inline constexpr char kWhaleName[] = "whale";

/// Marks dead whatever gives points and is not Core, then makes the whale in the middle of the stage. Its first update
/// sends it on its course.
GameObject& BuildWhale();
/// Makes the whale alone.
GameObject& MakeWhale();

/// Turns its owner into a whale: builds one and marks the owner dead.
class MakeAWhale final : public Script {
 public:
  void Update(float step) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "makeawhale"; }

 private:
  bool done_ = false;
};
