#include "physics/make_physical.h"

#include "core/transform.h"
#include "physics/primitive_assemblage.h"
#include "physics/rigid_body.h"

namespace GalePhysics {

namespace {

void InsertCollider(GameObject& object, const PhysicalDefinition& definition) {
  const Vec3& size = definition.size;
  switch (definition.shape) {
    case PhysicalShape::kBox:
      object.Insert(std::make_unique<BoxCollider>(Vec3{size.x, size.y, 0.0f}, definition.restitution));
      break;
    case PhysicalShape::kSphere:
      object.Insert(std::make_unique<SphereCollider>(size.x, definition.restitution));
      break;
    case PhysicalShape::kAssemblage:
      object.Insert(std::make_unique<PrimitiveAssemblage>());
      break;
    case PhysicalShape::kNone:
      break;
  }
}

// Moment of inertia of a plate about its middle, and of a disc.
float Inertia(const PhysicalDefinition& definition) {
  const Vec3& size = definition.size;
  return definition.shape == PhysicalShape::kBox ? definition.mass * (size.x * size.x + size.y * size.y) / 12.0f
                                                 : 0.5f * definition.mass * size.x * size.x;
}

}  // namespace

void MakePhysical(GameObject& object, const PhysicalDefinition& definition) {
  Transform& transform = object.GetTransform();
  transform.position = definition.position;
  transform.orientation = QuaternionFromZ(definition.angle);
  transform.graphicsScale = definition.size;
  auto& body =
      object.Insert(std::make_unique<RigidBody>(definition.velocity, definition.acceleration, definition.rotationLocked,
                                                definition.angularVelocity, definition.mass));
  InsertCollider(object, definition);
  if (definition.shape == PhysicalShape::kNone) return;
  const Matrix33 inertia = Matrix33{} * Inertia(definition);
  Matrix33 inverse;
  if (Invert(inertia, inverse)) body.SetInverseInertia(inverse);
}

}  // namespace GalePhysics
