// Where points are kept and who is ahead. Points travel as bubbles (see point_bubble.h) to the player's display, an
// object with a ScoreScript, which counts what arrives.
#pragma once

#include <array>

#include "core/event.h"
#include "match/players.h"
#include "physics/math/vec3.h"

namespace GalePhysics {
class WobblyPuller;
}

/// Event to a display: a bubble has arrived. The payload is a SentPoints.
inline constexpr char kSentPoints[] = "sentPoints";
struct SentPoints {
  int value;
  int player;  ///< index of who earned them
};

/// The objects that show the scores, by player index.
inline constexpr std::array<const char*, kPlayers> kScoreObjects = {"ScoreText", "ScoreText2", "ScoreText3",
                                                                    "ScoreText4"};

struct Rank {
  int player;  ///< index
  int points;
};
/// Points of a player who has no display.
inline constexpr int kNoScore = -1337;

/// All players, most points first, equal ones by their number.
std::array<Rank, kPlayers> RankPlayers();

/// Builds the four displays and the pullers that draw bubbles to them.
void CreateScoreDisplays();
/// What draws the player's bubbles to the display; null before displays are built. Not owned.
GalePhysics::WobblyPuller* GetPlayerPuller(int player);

/// Awards points to the player of that index: at `origin`, or at the player when it is zero. Nothing without a player
/// who can score.
void AwardPoints(int player, int points, const Vec3& origin = {});
/// All points awarded since the program started, whether they have arrived or not; for whoever measures a run.
long long GetPointsAwarded();
