// Follows the matches of a run: who stands where, how often the lead changed hands, and in whose time points were
// awarded. It listens to the run's log and passes everything on.
#pragma once

#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/run_log.h"
#include "match/players.h"
#include "match/score/ranking.h"
#include "tools/simulate/seat_tables.h"

class MatchRecorder final : public RunLogListener {
 public:
  /// Listens from now on; `next` hears everything too, null for none. Neither is owned.
  explicit MatchRecorder(RunLogListener* next);
  MatchRecorder(const MatchRecorder&) = delete;
  MatchRecorder& operator=(const MatchRecorder&) = delete;
  ~MatchRecorder() override;

  /// Says who flies each seat: from now on the tables tell what every seat gets.
  void TellSeats(const SeatNames& names) { seats_.emplace(names); }
  /// After every frame.
  void EndFrame();
  /// Forgets the present match, for the next one; a new game does so by itself.
  void BeginMatch();
  /// The win screen has its podium and waits for a button.
  bool IsAtPodium() const { return atPodium_; }
  /// The podium has been read; the ranking stays as it read it.
  bool IsDecided() const { return decided_; }
  /// Enters the match into the tables and prints its line; `frames` of this match.
  void FinishMatch(std::FILE* out, int frames);

  /// The lines of all finished matches together.
  void PrintTables(std::FILE* out) const;
  /// The four lines of the present match's ranking.
  void PrintRanking(std::FILE* out) const;

  void OnEvent(std::string_view text) override;

 private:
  struct Objective {
    std::string name;
    bool paid;        // in the present match
    int matchesPaid;  // in all finished ones
  };
  void NoteAwards();
  void NoteLead();
  double MedianSpread() const;

  RunLogListener* next_;
  bool atPodium_ = false;
  bool begun_ = false;  // its standings have been read
  bool decided_ = false;
  std::array<Rank, kPlayers> ranks_{};
  int leader_;  // player index
  int leadChanges_ = 0;
  long long awarded_ = 0;
  std::vector<Objective> objectives_;  // in the order of their first begin
  int running_;                        // index of the objective whose time it is
  int matches_ = 0;
  std::array<int, kPlayers> wins_{};
  std::vector<double> spreads_;  // per cent, one a match
  std::optional<SeatTables> seats_;
};
