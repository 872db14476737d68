#include "match/whale/make_a_whale.h"

#include <numbers>

#include "core/field_bar.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "graphics/sprite.h"
#include "match/score/give_points.h"
#include "physics/make_physical.h"
#include "physics/primitive_assemblage.h"
#include "physics/rigid_body.h"

namespace {

constexpr Vec3 kSize = {3.0f, 8.0f, 0.0f};                     // nose up
constexpr float kWidth = 2.0f * std::numbers::sqrt2_v<float>;  // of the hull, the diagonal of the nose
constexpr Vec3 kNose = {2.0f, 2.0f, 0.0f};                     // a square standing on its corner
constexpr Vec3 kNosePlace = {0.0f, 3.1f, 0.0f};
constexpr float kNoseTurn = 45.0f;  // degrees
constexpr Vec3 kHull = {kWidth, kWidth + 4.0f, 0.0f};

void MakeBody(GameObject& whale) {
  GalePhysics::PhysicalDefinition definition;
  definition.shape = GalePhysics::PhysicalShape::kAssemblage;
  definition.size = kSize;
  definition.mass = 0.0f;
  definition.restitution = 0.0f;
  MakePhysical(whale, definition);
  auto& body = *whale.Get<GalePhysics::RigidBody>();
  body.rotationLocked = true;
  body.inverseMass = 0.0f;
  body.damping = 1.0f;
  auto& collider = *whale.Get<GalePhysics::PrimitiveAssemblage>();
  collider.collisionGroup = 0;
  collider.AddBoxPart(kNose, kNosePlace, kNoseTurn);
  collider.AddBoxPart(kHull, {}, 0.0f);
}

}  // namespace

GameObject& BuildWhale() {
  RemovePrizes();
  return MakeWhale();
}

GameObject& MakeWhale() {
  GameObject& whale = *Objects().GetObject(Objects().CreateObject());
  whale.name = kWhaleName;
  MakeBody(whale);
  Sprite& sprite = whale.Insert(std::make_unique<Sprite>());
  sprite.texturePath = "rightythewhale.png";
  sprite.shaderName = "underquay";
  // The fountain turns all fountains off when it is made, and the first placing turns them on.
  auto& scripts = whale.Insert(std::make_unique<ScriptBox>());
  for (const char* script : {"PiratePathing", "fountain", "bosshealth"}) scripts.AddScript(script);
  return whale;
}

void MakeAWhale::Update(float /*step*/) {
  if (done_ || !owner->alive) return;
  done_ = true;
  BuildWhale();
  owner->alive = false;
}

void MakeAWhale::AddToTweakBar(FieldBar& bar) { bar.AddEmptyGroup("makeawhale"); }
