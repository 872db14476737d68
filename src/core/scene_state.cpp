#include "core/scene_state.h"

#include <vector>

namespace {

// Never destroyed: slots leave it at the end of the process, in any order.
std::vector<SceneSlot*>& Slots() {
  static auto& slots = *new std::vector<SceneSlot*>;
  return slots;
}

}  // namespace

SceneSlot::SceneSlot() { Slots().push_back(this); }
SceneSlot::~SceneSlot() { std::erase(Slots(), this); }

void ParkSceneState() {
  for (SceneSlot* slot : Slots()) slot->Park();
}

void ReturnSceneState() {
  for (SceneSlot* slot : Slots()) slot->Return();
}

void ExchangeSceneState() {
  for (SceneSlot* slot : Slots()) slot->Exchange();
}

void RenewSceneState() {
  for (SceneSlot* slot : Slots()) slot->Renew();
}
