// A constant pull, the same for every mass.
#pragma once

#include "physics/force_generator.h"
#include "physics/math/vec3.h"

namespace GalePhysics {

class GravityGenerator final : public ForceGenerator {
 public:
  GravityGenerator() = default;
  explicit GravityGenerator(const Vec3& pull) : gravity(pull) {}

  void UpdateForce(RigidBody& body) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "gravity"; }

  Vec3 gravity = {0.0f, -1.0f, 0.0f};  ///< world units per body second squared
};

}  // namespace GalePhysics
