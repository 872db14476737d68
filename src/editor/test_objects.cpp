#include "editor/test_objects.h"

#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/renderer.h"
#include "graphics/sprite.h"
#include "match/match_controller.h"
#include "match/rules/objective_factory.h"
#include "match/rules/objective_manager.h"
#include "match/score/give_points.h"
#include "match/whale/make_a_whale.h"
#include "physics/make_physical.h"
#include "physics/rigid_body.h"
#include "physics/sphere_collider.h"
#include "scripts/props/death_timer.h"

namespace {

using GalePhysics::MakePhysical;
using GalePhysics::PhysicalShape;

constexpr char kTestPicture[] = "tstc.png";
constexpr Vec3 kBoxSize = {2.0f, 2.0f, 0.0f};     // edges
constexpr Vec3 kSphereSize = {1.0f, 1.0f, 0.0f};  // radius, and half the picture
constexpr float kSphereTime = 9999.0f;            // seconds

GameObject& Create() { return *Objects().GetObject(Objects().CreateObject()); }

void LoadPicture(const std::string& picture) {
  if (GetRenderer().GetTexture(picture) == 0) GetRenderer().LoadTexture(picture);
}

void AddTestPicture(GameObject& object) {
  object.Insert(std::make_unique<Sprite>()).texturePath = kTestPicture;
  LoadPicture(kTestPicture);
}

GameObject* MakeBox() {
  GameObject& box = Create();
  MakePhysical(box, {.shape = PhysicalShape::kBox, .size = kBoxSize});
  box.Get<GalePhysics::RigidBody>()->damping = 1.0f;
  AddTestPicture(box);
  box.Insert(std::make_unique<ScriptBox>());
  return &box;
}

GameObject* MakeSphere() {
  GameObject& sphere = Create();
  MakePhysical(sphere, {.shape = PhysicalShape::kSphere, .size = kSphereSize, .mass = 0.0f, .rotationLocked = true});
  sphere.GetTransform().graphicsScale = {2.0f * kSphereSize.x, 2.0f * kSphereSize.y, 0.0f};
  sphere.Get<GalePhysics::RigidBody>()->damping = 1.0f;
  AddTestPicture(sphere);
  sphere.Insert(std::make_unique<ScriptBox>()).AddScript(std::make_unique<DeathTimer>(kSphereTime));
  sphere.Insert(std::make_unique<GivePoints>());
  return &sphere;
}

GameObject* MakeGhost() {
  GameObject& object = Create();
  object.Insert(std::make_unique<GalePhysics::SphereCollider>(1.0f, 1.0f)).ghost = true;
  return &object;
}

GameObject* MakeSegmentManager() {
  GameObject& manager = Create();
  manager.name = kMatchController;
  // A ghost: it carries the rules and is nothing to bump into.
  manager.Insert(std::make_unique<GalePhysics::SphereCollider>(1.0f, 1.0f)).ghost = true;
  auto objectives = std::make_unique<ObjectiveManager>();
  objectives->Add(CreateObjective("KingOfTheHill"));
  manager.Insert(std::make_unique<ScriptBox>()).AddScript(std::move(objectives));
  return &manager;
}

// Its picture may not be loaded yet outside a match.
GameObject* MakeAssemblage() {
  GameObject& whale = MakeWhale();
  LoadPicture(whale.Get<Sprite>()->texturePath);
  return &whale;
}

}  // namespace

const std::vector<TestObject>& TestObjects() {
  static const std::vector<TestObject> objects = {{"Make default box", MakeBox},
                                                  {"Make default sphere", MakeSphere},
                                                  {"Make default object", MakeGhost},
                                                  {"Make segment manager", MakeSegmentManager},
                                                  {"Make Assemblage", MakeAssemblage}};
  return objects;
}
