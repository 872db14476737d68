// A compound of boxes and spheres fixed to one object; made in code only, never saved.
#pragma once

#include <memory>
#include <vector>

#include "physics/box_collider.h"
#include "physics/sphere_collider.h"

namespace GalePhysics {

class PrimitiveAssemblage final : public Collider {
 public:
  static constexpr Kind kKind = Kind::kPrimitiveAssemblage;

  PrimitiveAssemblage() : Collider(0.0f, 0.0f, false) {}
  ColliderType GetColliderType() const override { return ColliderType::kAssemblage; }

  /// Adds a box of full edge lengths `size` at `offset` from the owner, turned about z by `degrees`. The assemblage
  /// must be in its object already.
  void AddBoxPart(const Vec3& size, const Vec3& offset, float degrees);

  std::vector<std::unique_ptr<BoxCollider>> boxes;  ///< tested before the spheres
  std::vector<std::unique_ptr<SphereCollider>> spheres;

 private:
  ShapeListing<PrimitiveAssemblage> listing_{*this};
};

}  // namespace GalePhysics
