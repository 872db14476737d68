// Which seat was paid under which rule, and who won: what tells skill from luck and a good seat from a bad one.
#pragma once

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "match/players.h"

/// By player index.
using SeatPoints = std::array<int, kPlayers>;
/// Who flies each seat, in a word.
using SeatNames = std::array<std::string, kPlayers>;

/// The points of each player that are on the displays or on their way there.
SeatPoints CountPoints();

class SeatTables {
 public:
  explicit SeatTables(const SeatNames& names) : names_(names) {}

  void BeginRule(std::string_view rule, const SeatPoints& points);
  void EndRule(const SeatPoints& points);
  /// With the match's final points; ends the running rule too.
  void FinishMatch(const SeatPoints& points, int winner);
  void Print(std::FILE* out) const;

 private:
  struct Rule {
    std::string name;
    SeatPoints points{};   // in all finished matches
    SeatPoints matches{};  // in which the seat was paid
  };
  struct Gain {
    std::size_t rule;
    SeatPoints before;
    SeatPoints points;
  };
  void PrintKinds(std::FILE* out) const;

  SeatNames names_;
  std::vector<Rule> rules_;  // in the order of their first begin
  std::vector<Gain> gains_;  // of the present match
  bool running_ = false;     // the last of them
  int matches_ = 0;
  SeatPoints wins_{};
  SeatPoints points_{};
};
