// A straight change over time, of which there are three: a place, a size, an opacity. Made by code; files name them
// only to no effect, since their values are not kept.
#pragma once

#include "core/script.h"

/// The timing that the three share: waits, then runs from 0 to about 1, then rests where its last step left it.
class LerpAnimator : public Script {
 public:
  /// In seconds at 60 updates each; `endTime` counts from the end of the delay.
  LerpAnimator(float endTime, float delay) : endTime_(endTime), delay_(delay) {}

  void Update(float step) override;
  void Initialize() override;

 protected:
  /// `t`: fraction of the way, which may pass 1 in the last step.
  virtual void Apply(float t) = 0;

 private:
  float endTime_;
  float delay_;
  float elapsed_ = 0.0f;
};
