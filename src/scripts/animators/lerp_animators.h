// Straight changes over time: a place, a size, an opacity. Made by code; files name them only to no effect, since their
// values are not kept.
#pragma once

#include "core/script.h"
#include "physics/math/vec3.h"

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

/// Moves the owner.
class LerpVecAnimator final : public LerpAnimator {
 public:
  LerpVecAnimator() : LerpVecAnimator({}, {}, 0.0f, 0.0f) {}
  LerpVecAnimator(const Vec3& start, const Vec3& end, float endTime, float delay)
      : LerpAnimator(endTime, delay), start_(start), end_(end) {}
  const char* GetName() const override { return "class LerpVecAnimator"; }

 private:
  void Apply(float t) override;

  Vec3 start_;
  Vec3 end_;
};

/// Sets the owner's graphics scale, equal in x and y.
class LerpSizeAnimator final : public LerpAnimator {
 public:
  LerpSizeAnimator() : LerpSizeAnimator(0.0f, 0.0f, 0.0f, 0.0f) {}
  LerpSizeAnimator(float start, float end, float endTime, float delay)
      : LerpAnimator(endTime, delay), start_(start), end_(end) {}
  const char* GetName() const override { return "class LerpSizeAnimator"; }

 private:
  void Apply(float t) override;

  float start_;
  float end_;
};

/// Sets the opacity of the owner's sprite; both ends are 0 to 255.
class LerpOpacityAnimator final : public LerpAnimator {
 public:
  LerpOpacityAnimator() : LerpOpacityAnimator(0.0f, 0.0f, 0.0f, 0.0f) {}
  LerpOpacityAnimator(float start, float end, float endTime, float delay)
      : LerpAnimator(endTime, delay), start_(start), end_(end) {}
  const char* GetName() const override { return "class LerpOpacityAnimator"; }

 private:
  void Apply(float t) override;

  float start_;
  float end_;
};
