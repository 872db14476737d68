#include "match/players.h"

#include <array>

#include "core/object_manager.h"
#include "core/scene_state.h"

namespace {

struct Players {
  std::array<std::uint32_t, kPlayers> objectIds{};
  bool demoMode = false;
};

Players& Get() {
  static SceneState<Players> players;
  return *players;
}

}  // namespace

void SetPlayerObject(int index, std::uint32_t objectId) {
  if (IsPlayerIndex(index)) Get().objectIds[static_cast<std::size_t>(index)] = objectId;
}

GameObject* GetPlayerObject(int index) {
  return IsPlayerIndex(index) ? Objects().GetObject(Get().objectIds[static_cast<std::size_t>(index)]) : nullptr;
}

bool IsDemoMode() { return Get().demoMode; }
void SetDemoMode(bool on) { Get().demoMode = on; }
