// Keeps its owner at another object's side and dies with it. Hits on the owner count as hits on a boss that it follows.
#pragma once

#include <cstdint>

#include "core/script.h"
#include "physics/math/vec3.h"

class Follow final : public Script {
 public:
  /// Follows nobody, so the owner dies at the first update.
  Follow() = default;
  /// `leader`: object ID; `offset`: world units from its place, never turned.
  Follow(std::uint32_t leader, const Vec3& offset) : leaderId_(leader), offset_(offset) {}

  void Update(float step) override;
  void OnContact(const GalePhysics::Contact& contact) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "follow"; }

 private:
  std::uint32_t leaderId_ = 0;
  Vec3 offset_;
};
