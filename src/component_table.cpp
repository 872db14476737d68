#include "component_table.h"

#include "core/component_factory.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "match/score/give_points.h"
#include "physics/box_collider.h"
#include "physics/rigid_body.h"
#include "physics/sphere_collider.h"

namespace {

template <class T>
void Enter(const char* textName) {
  RegisterComponentType({textName, T::kKind, []() -> std::unique_ptr<Component> { return std::make_unique<T>(); }});
}

}  // namespace

void RegisterAllComponents() {
  Enter<Transform>("Transform");
  Enter<ScriptBox>("ScriptBox");
  Enter<GalePhysics::RigidBody>("RigidBody");
  Enter<Sprite>("Sprite");
  Enter<GivePoints>("GivePoints");
  Enter<GalePhysics::SphereCollider>("SphereCollider");
  Enter<GalePhysics::BoxCollider>("BoxCollider");
}
