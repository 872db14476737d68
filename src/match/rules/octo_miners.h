// Everybody is swept out of the middle, dizzy, and then a shoal of golden fish bursts out of it.
#pragma once

#include "match/rules/objective.h"

class OctoMiners final : public Objective {
 public:
  using Objective::Objective;

  void Begin() override;
  void Update(float step) override;
  void End() override;

 private:
  void Release();

  float startTime_ = 0.0f;  // game time
  bool minersReleased_ = false;
};
