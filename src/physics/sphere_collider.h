// A sphere around its owner's position.
#pragma once

#include "physics/collider.h"

namespace GalePhysics {

class SphereCollider final : public Collider {
 public:
  static constexpr Kind kKind = Kind::kSphereCollider;

  /// Radius 1, solid, restitution 1.
  SphereCollider() : SphereCollider(1.0f, 1.0f) {}
  /// A part belongs to an assemblage instead of an object.
  SphereCollider(float sphereRadius, float bounce, bool part = false)
      : Collider(sphereRadius, bounce, part), radius(sphereRadius) {}

  void Serialize(Serializer& writer) override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  ColliderType GetColliderType() const override { return ColliderType::kSphere; }

  /// The centre in the world, by the owner's cached matrix; a part's offset is not turned.
  Vec3 WorldCentre() const;

  float radius;     ///< world units
  Vec3 partOffset;  ///< from the owner's position; parts only

 private:
  ShapeListing<SphereCollider> listing_{*this};
};

}  // namespace GalePhysics
