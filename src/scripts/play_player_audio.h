// What a player is heard to bump into.
#pragma once

#include "core/script.h"

class PlayPlayerAudioScript final : public Script {
 public:
  void OnContact(const GalePhysics::Contact& contact) override;
  const char* GetName() const override { return "ppa"; }
};
