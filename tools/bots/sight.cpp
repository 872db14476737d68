#include "tools/bots/sight.h"

#include <cmath>
#include <limits>
#include <string_view>
#include <unordered_map>

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/player_name.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "match/match_controller.h"
#include "match/rules/objective_manager.h"
#include "physics/collider.h"
#include "physics/rigid_body.h"

namespace {

constexpr float kBrokenSpeed = 9.0f;       // broken things spin away at 10, and nothing that pays is as fast
constexpr float kBoxShare = 0.8f;          // of a box's half diagonal: how wide it is on the average
constexpr float kLargestObstacle = 4.0f;   // the whale is none to fly around
constexpr float kFollowingSquared = 0.5f;  // of a ring's speed

std::string RunningRule() {
  const Script* objectives = FindObjectives();
  const Objective* rule =
      objectives == nullptr ? nullptr : static_cast<const ObjectiveManager*>(objectives)->GetCurrentObjective();
  return rule == nullptr || !rule->IsActive() ? "" : rule->typeName;
}

const PayingThing* FindPaying(std::string_view picture, std::string_view rule) {
  static const auto table = [] {
    std::unordered_multimap<std::string_view, const PayingThing*> rows;
    for (const PayingThing& thing : PayingThings()) rows.emplace(thing.picture, &thing);
    return rows;
  }();
  const auto [first, last] = table.equal_range(picture);
  for (auto row = first; row != last; ++row)
    if (row->second->rule.empty() || row->second->rule == rule) return row->second;
  return nullptr;
}

// Rings in a chain wear their player's colour; white ones are told by following somebody.
bool IsTaken(const Sprite& sprite, const Vec3& velocity) {
  return sprite.r != sprite.g || sprite.g != sprite.b || SquaredLength(velocity) > kFollowingSquared;
}

float RadiusOf(const GalePhysics::Collider* collider, const Transform& transform) {
  if (collider == nullptr) return 0.5f * std::abs(transform.graphicsScale.x);
  const bool sphere = collider->GetColliderType() == GalePhysics::ColliderType::kSphere;
  return collider->broadPhaseSize * (sphere ? 1.0f : kBoxShare);
}

void See(const GameObject& object, Sight& sight) {
  const Sprite* sprite = object.Get<Sprite>();
  const GalePhysics::Collider* collider = GalePhysics::FindCollider(object);
  const auto* body = object.Get<GalePhysics::RigidBody>();
  if (sprite == nullptr || !sprite->visible || !object.alive) return;
  const PayingThing* pays = FindPaying(sprite->texturePath, sight.rule);
  const bool stuns = pays == nullptr && sprite->texturePath == kStunningPicture;
  const bool standsFast = collider != nullptr && !collider->ghost && body != nullptr && body->inverseMass == 0.0f;
  if (pays == nullptr && !stuns && !standsFast) return;
  const Transform& transform = object.GetTransform();
  const Vec3 velocity = body == nullptr ? Vec3{} : body->velocity;
  const float radius = RadiusOf(collider, transform);
  const bool taken = pays != nullptr && pays->how == Pays::kTouch && IsTaken(*sprite, velocity);
  const SeenThing seen = {object.id, transform.position, velocity, radius, pays, stuns, taken};
  if (pays == nullptr && !stuns) {
    if (radius < kLargestObstacle) sight.obstacles.push_back(seen);
  } else if (!(Length(velocity) > kBrokenSpeed && pays != nullptr && pays->how == Pays::kHit)) {
    sight.things.push_back(seen);
  }
}

}  // namespace

int WearerOf(const SeenThing& crown, const Sight& sight) {
  int wearer = -1;
  float nearest = std::numeric_limits<float>::max();
  for (int player = 0; player < kPlayers; ++player) {
    const SeenPlayer& seen = sight.players[static_cast<std::size_t>(player)];
    const float distance = SquaredLength(seen.place - crown.place);
    if (!seen.there || distance >= nearest) continue;
    nearest = distance;
    wearer = player;
  }
  return wearer;
}

void Look(int frame, Sight& sight) {
  sight.frame = frame;
  sight.rule = RunningRule();
  sight.units = Time().frameStep * kPhysicsShare * kSubSteps;
  sight.things.clear();
  sight.obstacles.clear();
  for (int player = 0; player < kPlayers; ++player) {
    SeenPlayer& seen = sight.players[static_cast<std::size_t>(player)];
    seen = {};
    const GameObject* object = GetPlayerObject(player);
    const auto* body = object == nullptr ? nullptr : object->Get<GalePhysics::RigidBody>();
    if (body != nullptr) seen = {true, object->GetTransform().position, body->velocity};
  }
  for (const auto& object : Objects().GetObjects())
    if (!IsPlayerName(object->name)) See(*object, sight);
}
