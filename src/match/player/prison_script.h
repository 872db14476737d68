// Keeps its owner inside the arena: a player that got out stands at its place in the middle again, anything else in
// the very middle.
#pragma once

#include "core/script.h"
#include "physics/math/vec3.h"

class PrisonScript final : public Script {
 public:
  void Update(float step) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  const char* GetName() const override { return "PrisonScript"; }

 private:
  Vec3 corner_ = {-16.0f, 11.0f, 1.0f};  // upper left
  Vec3 size_ = {32.0f, 22.0f, 1.0f};
};
