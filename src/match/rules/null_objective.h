// Fills a section with nothing.
#pragma once

#include "match/rules/objective.h"

class NullObjective final : public Objective {
 public:
  using Objective::Objective;

  void Begin() override {}
  void Update(float) override {}
  void End() override {}
  void Serialize(Serializer& writer) const override;
  /// A time below 0 is taken as 0, with a message.
  void Deserialize(Serializer& reader) override;
};
