// Lets a thing come into the arena through its walls: outside nothing pushes it and walls let it pass, inside it is as
// solid and as heavy as it was made.
#pragma once

#include <cstdint>

#include "core/script.h"

class OneWayIntoStage final : public Script {
 public:
  void Update(float step) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  void GiveBack() override;
  void TakeAgain() override;
  const char* GetName() const override { return "onewayintostage"; }

  float butts = 5.0f;  ///< shown by the editor and used by nobody

 private:
  float rememberedMass_ = 0.0f;  // of the owner's body; 0: immovable
  bool outside_ = false;
  std::uint32_t ownGroup_ = 0;  // of the owner's collider while it is outside
};
