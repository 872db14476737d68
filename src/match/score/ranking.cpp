#include "match/score/ranking.h"

#include <algorithm>

#include "core/script_box.h"
#include "match/score/score_displays.h"
#include "match/score/score_script.h"

namespace {

int PointsOf(std::size_t player) {
  const Script* script = FindScript(kScoreObjects[player], "ScoreScript");
  return script == nullptr ? kNoScore : static_cast<const ScoreScript*>(script)->GetPoints();
}

}  // namespace

std::array<Rank, kPlayers> RankPlayers() {
  std::array<Rank, kPlayers> ranks;
  for (std::size_t player = 0; player < ranks.size(); ++player)
    ranks[player] = {static_cast<int>(player), PointsOf(player)};
  std::stable_sort(ranks.begin(), ranks.end(), [](const Rank& a, const Rank& b) { return a.points > b.points; });
  return ranks;
}
