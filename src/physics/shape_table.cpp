#include "physics/shape_table.h"

#include "physics/rigid_body.h"

namespace GalePhysics {

namespace {

Bounds BoundsOf(const Collider& collider) {
  switch (collider.GetColliderType()) {
    case ColliderType::kBox:
      return TightBounds(static_cast<const BoxCollider&>(collider));
    case ColliderType::kSphere:
      return TightBounds(static_cast<const SphereCollider&>(collider));
    case ColliderType::kAssemblage:
      break;
  }
  return TightBounds(static_cast<const PrimitiveAssemblage&>(collider));
}

}  // namespace

void ShapeTable::Place(std::uint32_t row, const Bounds& bounds) {
  const Collider& collider = *shapes_[row].collider;
  const Vec3& p = collider.owner->GetTransform().position;
  const float r = collider.broadPhaseSize;
  shapes_[row].circle = {p.x, p.y, r};
  reaches_[row] = Lanes{p.x, -p.x, p.y, -p.y} + r;
  bounds_[row] = bounds;
}

void ShapeTable::Renew() {
  const auto& boxes = ShapeListing<BoxCollider>::List();
  const auto& spheres = ShapeListing<SphereCollider>::List();
  const auto& assemblages = ShapeListing<PrimitiveAssemblage>::List();
  Resize(boxes.size() + spheres.size() + assemblages.size());
  moving_.clear();
  std::uint32_t rows = RenewFrom(boxes, 0);
  rows = RenewFrom(spheres, rows);
  rows = RenewFrom(assemblages, rows);
  Resize(rows);
}

void ShapeTable::Resize(std::size_t size) {
  shapes_.resize(size);
  bounds_.resize(size);
  reaches_.resize(size);
}

// Fills the rows from `row` on and gives the one after the last.
template <class Shapes>
std::uint32_t ShapeTable::RenewFrom(const Shapes& shapes, std::uint32_t row) {
  for (const auto* shape : shapes) {
    if (shape->owner == nullptr) continue;
    shapes_[row].collider = shape;
    shapes_[row].meetsAll = MeetsAll(shape->collisionGroup);
    Place(row, TightBounds(*shape));
    const auto* body = shape->owner->template Get<RigidBody>();
    if (body != nullptr && !body->atRest) moving_.push_back(row);
    ++row;
  }
  return row;
}

void ShapeTable::Follow() {
  for (const std::uint32_t row : moving_) Place(row, BoundsOf(*shapes_[row].collider));
}

}  // namespace GalePhysics
