// The rule without a rule: what pays is whatever in the stage gives points when it is hit.
#pragma once

#include "match/rules/objective.h"

class HitObjects final : public Objective {
 public:
  using Objective::Objective;
  void Update(float /*step*/) override {}
};
