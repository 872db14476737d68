#include "match/episode/respawn_node_manager.h"

#include <utility>

#include "core/game_object.h"
#include "core/object_manager.h"
#include "core/random.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "scripts/props/collision_check_script.h"

namespace {

constexpr int kShuffles = 20;

CollisionCheckScript& CheckOf(const GameObject& node) {
  return *static_cast<CollisionCheckScript*>(node.Get<ScriptBox>()->GetScript("CollisionCheckScript"));
}

void Shuffle(std::vector<GameObject*>& nodes) {
  if (nodes.size() < 2) return;
  for (int i = 0; i < kShuffles; ++i) {
    const std::size_t first = RandomIndex(nodes.size());
    std::size_t second = first;
    while (second == first) second = RandomIndex(nodes.size());
    std::swap(nodes[first], nodes[second]);
  }
}

}  // namespace

void RespawnNodeManager::Initialize() {
  for (std::uint32_t& id : nodeIds_) {
    id = Objects().CreateObject();
    GameObject& node = *Objects().GetObject(id);
    node.core = true;
    node.GetTransform().position = fallbackPosition;
    node.Insert(std::make_unique<ScriptBox>()).AddScript(std::make_unique<CollisionCheckScript>());
  }
}

RespawnNodeManager::~RespawnNodeManager() {
  for (const std::uint32_t id : nodeIds_)
    if (GameObject* node = Objects().GetObject(id)) node->alive = false;
}

GameObject* RespawnNodeManager::GetNode(std::size_t index) const {
  return index < kNodes ? Objects().GetObject(nodeIds_[index]) : nullptr;
}

void RespawnNodeManager::Update(float /*step*/) {
  std::vector<GameObject*> free;
  for (std::size_t i = 0; i < kNodes; ++i)
    if (GameObject* node = GetNode(i); node != nullptr && !std::exchange(CheckOf(*node).hit, false))
      free.push_back(node);
  Shuffle(free);
  std::size_t next = 0;
  for (const std::uint32_t id : std::exchange(queue_, {})) {
    GameObject* object = Objects().GetObject(id);
    if (object == nullptr) continue;
    object->GetTransform().position = next < free.size() ? free[next++]->GetTransform().position : fallbackPosition;
  }
}
