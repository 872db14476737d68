#include "scripts/breakable.h"

#include "core/game_object.h"

// Of all components, those of one kind alone break.
Breakable* FindBreakable(const GameObject& object) {
  return dynamic_cast<Breakable*>(object.GetComponent(Kind::kGivePoints));
}
