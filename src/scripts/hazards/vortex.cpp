#include "scripts/hazards/vortex.h"

#include <algorithm>

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/player_name.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "physics/rigid_body.h"
#include "physics/sphere_collider.h"

namespace {

constexpr float kGrowth = 0.5f;              // world units per game second
constexpr float kShrinkFactor = 0.995f;      // of a player's size, an overlap
constexpr float kGrowFactor = 1.001f;        // likewise
constexpr float kGoneSquared = 1e-5f;        // squared length of a scale that is as good as nothing
constexpr float kSmallest = 0.01f;           // size at which a player comes in
constexpr float kFullLength = 1.414213562f;  // length of the scale (1, 1, 0)
constexpr std::array<float, 4> kEntryX = {-0.5f, 0.5f, -1.5f, 1.5f};  // by player index, at y 0

void MakeGhost(const GameObject& object, bool ghost) {
  if (GalePhysics::Collider* collider = GalePhysics::FindCollider(object)) collider->ghost = ghost;
}

}  // namespace

void Vortex::Update(float step) {
  const float growth = step * kGrowth;
  Vec3& scale = owner->GetTransform().graphicsScale;
  scale.x += growth;
  scale.y += growth;
  auto* sphere = owner->Get<GalePhysics::SphereCollider>();
  if (sphere == nullptr) return;
  sphere->radius += growth;
  sphere->broadPhaseSize = sphere->radius;
}

void Vortex::OnCollision(const CollisionPair& pair) {
  if (!owner->alive) return;
  GameObject& other = *pair.other;
  Vec3 way = owner->GetTransform().position - other.GetTransform().position;
  way.z = 0.0f;
  const float distance = Length(way);
  if (!isExit) way = -way;
  if (auto* body = other.Get<GalePhysics::RigidBody>()) body->forceTotal += Normalised(way) * pullingConstant;
  if (isExit && distance >= pointDistance) return;
  if (!IsPlayerName(other.name)) {
    if (other.GetComponent(Kind::kGivePoints) != nullptr) other.alive = false;
    return;
  }
  MakeGhost(other, true);
  if (isExit)
    Swallow(other);
  else
    LetIn(other, PlayerIndexFromName(other.name));
}

void Vortex::Swallow(GameObject& player) {
  Vec3& scale = player.GetTransform().graphicsScale;
  scale *= kShrinkFactor;
  if (SquaredLength(scale) < kGoneSquared) Finish(PlayerIndexFromName(player.name));
}

void Vortex::LetIn(GameObject& player, int index) {
  Transform& transform = player.GetTransform();
  Vec3& scale = transform.graphicsScale;
  if (scale.x <= kSmallest || scale.y <= kSmallest) {
    const auto place = static_cast<std::size_t>(index);
    if (place < kEntryX.size()) transform.position = {kEntryX[place], 0.0f, 0.0f};
    scale = {kSmallest, kSmallest, 0.0f};
  }
  scale *= kGrowFactor;
  if (Length(scale) < kFullLength) return;
  scale = {1.0f, 1.0f, 0.0f};
  MakeGhost(player, false);
  Finish(index);
}

void Vortex::Finish(int index) {
  const auto player = static_cast<std::size_t>(index);
  if (player < finished_.size()) finished_[player] = true;
  if (std::all_of(finished_.begin(), finished_.end(), [](bool finished) { return finished; })) owner->alive = false;
}

void Vortex::Serialize(Serializer& writer) const {
  writer.WriteFloat("pulling constant", pullingConstant);
  writer.WriteFloat("point distance", pointDistance);
  writer.WriteInt("points given", pointsGiven);
  writer.WriteBool("is used to exit the stage", isExit);
}

void Vortex::Deserialize(Serializer& reader) {
  pullingConstant = reader.ReadFloat();
  pointDistance = reader.ReadFloat();
  pointsGiven = reader.ReadInt();
  isExit = reader.ReadBool();
}

void Vortex::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("vortex");
  bar.Add("pulling constant", &pullingConstant);
  bar.Add("point distance", &pointDistance);
  bar.Add("points given", &pointsGiven);
  bar.Add("is used to exit the stage", &isExit);
  bar.EndGroup();
}
