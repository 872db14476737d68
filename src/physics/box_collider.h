// A box around its owner's position, turned with it. Without thickness (z half extent 0) it is tested in the plane.
#pragma once

#include "physics/collider.h"
#include "physics/math/quaternion.h"

namespace GalePhysics {

class BoxCollider final : public Collider {
 public:
  static constexpr Kind kKind = Kind::kBoxCollider;

  /// Without extent, solid, restitution 1.
  BoxCollider() : BoxCollider({}, 1.0f) {}
  /// From full edge lengths in world units. A part belongs to an assemblage instead of an object.
  BoxCollider(const Vec3& edges, float bounce, bool part = false);

  void Serialize(Serializer& writer) override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  ColliderType GetColliderType() const override { return ColliderType::kBox; }

  /// The map from the box's own frame to the world, by the owner's cached matrix.
  Matrix34 WorldMatrix() const;

  Vec3 halfExtents;         ///< world units
  Vec3 partOffset;          ///< from the owner's position; parts only
  Quaternion partRotation;  ///< parts only

 private:
  ShapeListing<BoxCollider> listing_{*this};
};

}  // namespace GalePhysics
