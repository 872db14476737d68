// The whale swims across the stage, and the barnacles on it pay. It stays after the rule's end, so this rule comes
// last.
#pragma once

#include "match/rules/objective.h"

class WhaleBoss final : public Objective {
 public:
  using Objective::Objective;

  void Begin() override;
  void Update(float /*step*/) override {}
  /// A player clears away a ring that an earlier rule left.
  void OnContact(const GalePhysics::Contact& contact) override;
};
