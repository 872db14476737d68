// Plays the owner's strip of four frames now and then, with a random rest in between.
#pragma once

#include "core/script.h"

class SquidAnimator final : public Script {
 public:
  void Update(float step) override;
  const char* GetName() const override { return "SquidAnimator"; }

 private:
  void Advance();

  float offset_ = 0.0f;  // of the frame shown, as a fraction of the strip
  float timer_ = 0.0f;   // game seconds since the last frame; below 0 while it rests
  bool animating_ = false;
};
