// What a player is heard to bump into.
#pragma once

#include "core/script.h"

class PlayPlayerAudioScript final : public Script {
 public:
  void OnContact(const GalePhysics::Contact& contact) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "ppa"; }
};
