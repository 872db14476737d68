// Who is ahead.
#pragma once

#include <array>

#include "match/players.h"

struct Rank {
  int player;  ///< index
  int points;
};
/// Points of a player who has no display.
inline constexpr int kNoScore = -1337;

/// All players by the points on their displays, most first, equal ones by their number.
std::array<Rank, kPlayers> RankPlayers();
