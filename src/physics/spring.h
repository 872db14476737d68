// Hooke's law between a body and the object that the spring is anchored at, without damping.
#pragma once

#include <cstdint>

#include "physics/force_generator.h"

namespace GalePhysics {

class Spring final : public ForceGenerator {
 public:
  static constexpr std::int32_t kNoBase = -17;

  Spring() = default;
  Spring(const GameObject& base, float constant, float rest);

  /// Pulls the body when the spring is longer than its rest length and pushes it when shorter; an anchor that is gone
  /// pulls nothing.
  void UpdateForce(RigidBody& body) override;
  void SetBase(GameObject& base) override;
  /// True while the anchor exists.
  bool HasBase() const override;
  /// Also enters the spring at its anchor's body, which writes the link; it does so at every save.
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "spring"; }

  std::int32_t baseId = kNoBase;  ///< object ID of the anchor
  float springConstant = 0.0f;    ///< force per unit of stretch
  float restLength = 0.0f;        ///< world units
  float breakLength = 0.0f;       ///< stored and saved only, as are the next two
  bool breakIfOverLength = false;
  bool breakable = false;

 private:
  GameObject* FindBase() const;
};

}  // namespace GalePhysics
