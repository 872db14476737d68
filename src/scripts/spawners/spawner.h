// A test bench for the physics: throws boxes and balls of all kinds into the middle of the scene. In files it is
// "Spawner"; the "spawner" of levels is SpawnsObjects.
#pragma once

#include "core/script.h"

class Spawner final : public Script {
 public:
  void Update(float step) override;
  const char* GetName() const override { return "Spawner"; }

 private:
  float timer_ = 0.0f;  // game seconds since the last throw
};
