#include "match/score/hud.h"

#include <vector>

#include "core/object_manager.h"
#include "core/scene_state.h"
#include "graphics/sprite.h"

namespace {

struct Hud {
  std::vector<std::uint32_t> objectIds;
  bool shown = true;
};

Hud& Get() {
  static SceneState<Hud> hud;
  return *hud;
}

}  // namespace

void ClearHudObjects() { Get().objectIds.clear(); }
void AddHudObject(std::uint32_t objectId) { Get().objectIds.push_back(objectId); }

void ShowHud(bool shown) {
  if (Get().shown == shown) return;
  Get().shown = shown;
  for (const std::uint32_t id : Get().objectIds) {
    const GameObject* object = Objects().GetObject(id);
    if (Sprite* sprite = object == nullptr ? nullptr : object->Get<Sprite>()) sprite->visible = shown;
  }
}
