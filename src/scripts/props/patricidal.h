// Dissolves the copy of the generator host that opens every saved level: the generators that were read with it belong
// to the live host already.
#pragma once

#include "core/script.h"

class Patricidal final : public Script {
 public:
  /// When armed: empties the owner's box and marks the owner dead.
  void Update(float step) override;
  /// Reads no value; being read is what arms it, so the live host's own stays harmless.
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "patricidal"; }

 private:
  bool armed_ = false;
};
