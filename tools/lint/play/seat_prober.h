// Flies all four seats by their pads like players who are shut in: launch after launch in any direction. From time to
// time they are put elsewhere, first where no way leads out, then all over the stage.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "core/scripted_platform.h"
#include "tools/bots/bot_hands.h"

class SeatProber {
 public:
  static constexpr float kMoveAfter = 4.5f;  ///< game seconds

  /// `number` of `runs` that share the places.
  SeatProber(int number, int runs);

  /// Plugs in the pads, before the run begins.
  static void Connect(ScriptedPlatform& platform);
  /// A piece has come: its shut places are looked for.
  void BeginPiece();
  /// One frame, before the platform is pumped.
  void Play(int frame, ScriptedPlatform& platform);
  /// After a frame: whether all have been put elsewhere, as is due from time to time.
  bool MoveIfDue();

 private:
  struct Seat {
    Seat(int number, int player) : dice(static_cast<std::uint32_t>(number) + 1, player), hands(player, false, dice) {}
    BotDice dice;
    BotHands hands;
    BotPlan plan;
  };

  std::array<std::unique_ptr<Seat>, kPlayers> seats_;
  std::vector<Vec3> shutPlaces_;
  int runs_;
  int next_;            // place
  float since_ = 0.0f;  // game time of the last move
};
