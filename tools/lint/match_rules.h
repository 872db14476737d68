// What must hold for the things that make a match: the match controller, what gives points, and what is spawned.
#pragma once

#include <string>

#include "tools/lint/lint_object.h"

class MatchRules {
 public:
  /// `file`: the path of the level; archetypes and pieces are looked for beside it.
  MatchRules(const std::string& file, LintReport& report);

  void Check(const LintObject& object);
  /// After all objects.
  void Finish();

 private:
  void CheckController(const LintObject& object);
  void CheckSegments(const LintBlock& segments);
  void CheckPrize(const LintBlock& prize);
  void CheckSpawner(const LintBlock& spawner);

  std::string folder_;
  std::string level_;  // plain name
  LintReport& report_;
  bool hasController_ = false;
};
