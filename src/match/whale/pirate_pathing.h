// Swims its owner, the whale, along the course that all whales share (see whale_course.h). Making one starts it anew.
#pragma once

#include "core/script.h"
#include "match/whale/whale_course.h"

class PiratePathing final : public Script {
 public:
  PiratePathing();

  void Update(float step) override;
  const char* GetName() const override { return "PiratePathing"; }

  /// The owner dies instead of being placed once more.
  void Finish() { finished_ = true; }

  static const WhaleCourse& GetCourse();

 private:
  void Place();
  void Sweep(float step);
  void Erupt() const;
  bool HasReached(float x) const;

  bool finished_ = false;
};
