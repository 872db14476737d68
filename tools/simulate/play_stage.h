// What is played when a file is given instead of the game's own match: the match that the file is itself, or one with
// the file as its only piece, under the rule and for the time that the match of its folder gives it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "lint/level_file.h"

class PlayStage {
 public:
  /// Game seconds that a piece has under no match's rule, if it does not say how many itself.
  static constexpr float kDuration = 10.0f;
  /// Game seconds after the piece, in which what it has brought may go.
  static constexpr float kAfter = 2.5f;

  /// `file` absolute; `data` is the game's folder. Reads what is played; what is wrong with it, or empty.
  std::string Read(const std::string& file, const std::string& data);
  /// Makes a folder of links to the game's, with the match in the place of its own, and enters it: until LeaveOverlay.
  std::string Enter() const;

  /// Whether it is one piece, after which nothing comes any more.
  bool IsPiece() const { return !match_; }
  /// How many pieces are looked at, in the order of the match.
  int CountPieces() const { return static_cast<int>(pieces_.size()); }
  const std::string& GetName(int piece) const { return pieces_[static_cast<std::size_t>(piece)]; }
  /// Game seconds of all of them, and the time after it.
  float GetDuration() const { return duration_; }
  /// Where the match names the rule of that turn: a line of the played file; 0 when that has none.
  int LineOfRule(int turn) const;
  /// The rule's name in files.
  std::string NameOfRule(int turn) const;

 private:
  void ReadMatch(const LintBlock& segments, const LintBlock& objectives);
  void ReadPiece(LevelFolder& folder);
  std::string MatchText() const;

  std::string file_;
  std::string data_;
  bool match_ = false;
  std::vector<std::string> pieces_;
  float duration_ = 0.0f;  // game seconds
  struct Rule {
    std::string name;
    std::string values;  // lines behind its name in a file
    int line = 0;
  };
  std::vector<Rule> rules_;
  std::string placing_ = "\t\t\t\trotationAngle_: 0\n\t\t\t\tdistance_: 0\n";  // of the piece, as in a file
};
