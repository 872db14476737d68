// The four displays on the quay, and the pullers that draw each player's bubbles to its display.
#pragma once

#include <array>

#include "match/players.h"

namespace GalePhysics {
class WobblyPuller;
}

/// The objects that show the scores, by player index.
inline constexpr std::array<const char*, kPlayers> kScoreObjects = {"ScoreText", "ScoreText2", "ScoreText3",
                                                                    "ScoreText4"};

/// Builds the displays and their pullers.
void CreateScoreDisplays();
/// What draws the player's bubbles to the display; null before displays are built. Not owned.
GalePhysics::WobblyPuller* GetPlayerPuller(int player);
