// Makes lines of lint of what all runs of a stage have told together.
#pragma once

#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "lint/level_file.h"
#include "lint/report.h"
#include "tools/lint/play/play_run.h"

class PlayReport {
 public:
  /// `report` is the played file's; other pieces of a match are named as files of `folder` and go to `out`.
  PlayReport(const PlayStage& stage, LintReport& report, const std::string& file, const std::string& folder,
             std::FILE* out);

  /// Whether faults were found in what the runs tell.
  bool Tell(const std::vector<PlayResult>& results);

 private:
  using Notes = std::vector<PlayNote>;
  void TellStays(const Notes& notes);
  void TellStuns(const Notes& notes, std::size_t runs);
  void TellThings(const Notes& notes, bool givenUp);
  void TellRules(const Notes& notes);
  void TellCrowds(const Notes& notes);
  void TellSlow(const Notes& notes);
  int FindBlamed(const Notes& notes, int turn) const;
  int FindPrize(int turn) const;
  const LintLevel& LevelOf(int turn);
  void Say(int turn, int object, RuleName rule, const std::string& text);

  struct Piece {
    std::unique_ptr<LintLevel> level;
    std::unique_ptr<LintReport> report;  // null: the played file's
  };

  const PlayStage& stage_;
  LintReport& report_;
  std::vector<Piece> pieces_;
  std::set<std::pair<std::pair<int, int>, std::string>> said_;
};
