// Chooses the first frame of its owner's FishAnimator, which must stand before it in the script list.
#pragma once

#include "core/script.h"

class RainbowFish final : public Script {
 public:
  /// Once; without a FishAnimator nothing happens.
  void Update(float step) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "rainbowfish"; }

 private:
  int startingFrame_ = 0;
  bool done_ = false;
};
