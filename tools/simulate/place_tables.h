// Where players spend their time in each piece, where they are stunned, and how long points are on their way: what a
// report draws over a picture of the piece.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/run_log.h"
#include "match/players.h"
#include "physics/math/vec3.h"

class PlaceTables final : public RunLogListener {
 public:
  static constexpr int kEvery = 6;      ///< frames between two looks at the players
  static constexpr float kCell = 0.5f;  ///< world units
  static constexpr int kColumns = 64;   ///< cells from x -16 to the right
  static constexpr int kRows = 44;      ///< cells from y -11 upwards
  static constexpr int kFlightBin = 6;  ///< frames

  /// Hands every event on to `next`, null for none.
  explicit PlaceTables(RunLogListener* next) : next_(next) {}

  void EndFrame(int frame);
  void OnEvent(std::string_view text) override;
  /// `piece NAME frames N`, `places NAME PlayerN CELL LOOKS ...` (a cell is row times kColumns and column, rows from
  /// below), `stuns NAME PlayerN X Y ...`, `flights BIN COUNT ...`.
  void Print(std::FILE* out) const;

 private:
  struct Seat {
    std::map<int, int> looks;  // by cell
    std::vector<Vec3> stuns;
  };
  struct Piece {
    std::string name;
    int frames = 0;
    std::array<Seat, kPlayers> seats;
  };

  void FollowBubbles(int frame);
  void PrintSeat(std::FILE* out, const Piece& piece, int player) const;

  RunLogListener* next_;
  std::vector<Piece> pieces_;  // in the order of their first begin
  std::size_t running_ = 0;    // index
  bool playing_ = false;
  std::unordered_map<std::uint32_t, int> bubbles_;  // first frame, by ID
  std::unordered_set<std::uint32_t> otherThings_;   // that are none
  std::map<int, int> flights_;                      // by bin
};
