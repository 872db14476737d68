#include "scripts/props/one_way_into_stage.h"

#include <cmath>

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "physics/collider.h"
#include "physics/rigid_body.h"

namespace {

constexpr float kArenaHalfWidth = 15.0f;  // world units, at the walls' inner faces
constexpr float kArenaHalfHeight = 10.0f;
constexpr char kKey[] = "Butts";

}  // namespace

// Outside the inverse mass is a 0 that this script lends, so a 0 says nothing new about the mass.
void OneWayIntoStage::Update(float /*step*/) {
  GalePhysics::Collider* collider = GalePhysics::FindCollider(*owner);
  auto* body = owner->Get<GalePhysics::RigidBody>();
  if (collider == nullptr || body == nullptr) return;
  if (body->inverseMass != 0.0f) rememberedMass_ = 1.0f / body->inverseMass;
  const Vec3& p = owner->GetTransform().position;
  const float reach = collider->broadPhaseSize;
  const bool inside = std::abs(p.x) < kArenaHalfWidth - reach && std::abs(p.y) < kArenaHalfHeight - reach;
  if (!inside && !outside_) ownGroup_ = collider->collisionGroup;
  outside_ = !inside;
  collider->collisionGroup = inside ? 1 : 0;
  const float own = rememberedMass_ != 0.0f ? 1.0f / rememberedMass_ : 0.0f;
  body->inverseMass = inside ? own : 0.0f;
  body->storedInverseMass = inside ? 0.0f : own;
}

void OneWayIntoStage::GiveBack() {
  if (GalePhysics::Collider* collider = GalePhysics::FindCollider(*owner); collider != nullptr && outside_)
    collider->collisionGroup = ownGroup_;
}

void OneWayIntoStage::TakeAgain() {
  if (GalePhysics::Collider* collider = GalePhysics::FindCollider(*owner); collider != nullptr && outside_)
    collider->collisionGroup = 0;
}

// The value is a bool that means nothing; the key is the field's.
void OneWayIntoStage::Serialize(Serializer& writer) const { writer.WriteBool(kKey, true); }
void OneWayIntoStage::Deserialize(Serializer& reader) { reader.ReadBool(); }

void OneWayIntoStage::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("onewayintostage");
  bar.AddReadOnly("Butts", &butts);
  bar.EndGroup();
}
