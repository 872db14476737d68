// A shadow that grows and darkens under something about to land.
#pragma once

#include "core/script.h"

class ShadowGrowth final : public Script {
 public:
  ShadowGrowth() = default;
  /// `scaleFactor`: world units an update; below 0 the shadow grows mirrored and without end.
  explicit ShadowGrowth(float scaleFactor) : scaleFactor_(scaleFactor) {}

  /// Starts at nothing, whatever size the file gives the owner.
  void Initialize() override;
  /// Grows until both sides are larger than 1, so one that shrinks never stops.
  void Update(float step) override;
  void Serialize(Serializer& writer) const override;
  void Deserialize(Serializer& reader) override;
  const char* GetName() const override { return "ShadowGrowth"; }

 private:
  void SetFirstOpacity();

  bool opacitySet_ = false;
  float scaleFactor_ = 1.0f / 15.0f;  // world units an update
};
