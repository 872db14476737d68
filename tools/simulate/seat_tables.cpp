#include "tools/simulate/seat_tables.h"

#include <algorithm>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "match/score/point_movment.h"
#include "match/score/ranking.h"
#include "match/score/score_displays.h"

namespace {

double Share(double part, double whole) { return whole > 0.0 ? 100.0 * part / whole : 0.0; }
double Mean(int sum, int count) { return count > 0 ? static_cast<double>(sum) / count : 0.0; }

}  // namespace

SeatPoints CountPoints() {
  SeatPoints points{};
  for (const Rank& rank : RankPlayers()) points[static_cast<std::size_t>(rank.player)] = std::max(rank.points, 0);
  std::array<std::uint32_t, kPlayers> displays{};
  for (std::size_t player = 0; player < displays.size(); ++player)
    if (const GameObject* display = Objects().FindObjectByName(kScoreObjects[player])) displays[player] = display->id;
  for (const auto& object : Objects().GetObjects()) {
    const ScriptBox* scripts = object->Get<ScriptBox>();
    const Script* script = scripts == nullptr ? nullptr : scripts->GetScript("pointmovment");
    if (script == nullptr) continue;
    const auto* bubble = static_cast<const PointMovment*>(script);
    const auto display = std::find(displays.begin(), displays.end(), bubble->GetCreditTarget());
    if (display != displays.end()) points[static_cast<std::size_t>(display - displays.begin())] += bubble->GetValue();
  }
  return points;
}

void SeatTables::BeginRule(std::string_view rule, const SeatPoints& points) {
  auto found = std::find_if(rules_.begin(), rules_.end(), [&](const Rule& r) { return r.name == rule; });
  if (found == rules_.end()) found = rules_.insert(rules_.end(), Rule{std::string(rule)});
  gains_.push_back({static_cast<std::size_t>(found - rules_.begin()), points, {}});
  running_ = true;
}

void SeatTables::EndRule(const SeatPoints& points) {
  if (!running_) return;
  running_ = false;
  Gain& gain = gains_.back();
  for (std::size_t seat = 0; seat < points.size(); ++seat) gain.points[seat] = points[seat] - gain.before[seat];
}

void SeatTables::FinishMatch(const SeatPoints& points, int winner) {
  EndRule(points);
  for (const Gain& gain : gains_)
    for (std::size_t seat = 0; seat < gain.points.size(); ++seat) {
      rules_[gain.rule].points[seat] += gain.points[seat];
      rules_[gain.rule].matches[seat] += gain.points[seat] > 0 ? 1 : 0;
    }
  gains_.clear();
  ++matches_;
  ++wins_[static_cast<std::size_t>(winner)];
  for (std::size_t seat = 0; seat < points.size(); ++seat) points_[seat] += points[seat];
}

void SeatTables::Print(std::FILE* out) const {
  for (const Rule& rule : rules_) {
    std::fprintf(out, "rule %s paid", rule.name.c_str());
    for (const int matches : rule.matches) std::fprintf(out, " %d", matches);
    std::fprintf(out, " points");
    for (const int points : rule.points) std::fprintf(out, " %.1f", Mean(points, matches_));
    std::fprintf(out, "\n");
  }
  for (std::size_t seat = 0; seat < names_.size(); ++seat)
    std::fprintf(out, "seat Player%zu %s wins %d of %d %.1f %% points %.1f\n", seat + 1, names_[seat].c_str(),
                 wins_[seat], matches_, Share(wins_[seat], matches_), Mean(points_[seat], matches_));
  PrintKinds(out);
}

void SeatTables::PrintKinds(std::FILE* out) const {
  for (std::size_t seat = 0; seat < names_.size(); ++seat) {
    if (std::find(names_.begin(), names_.end(), names_[seat]) - names_.begin() != static_cast<std::ptrdiff_t>(seat))
      continue;
    int seats = 0;
    int wins = 0;
    int points = 0;
    for (std::size_t other = seat; other < names_.size(); ++other) {
      if (names_[other] != names_[seat]) continue;
      ++seats;
      wins += wins_[other];
      points += points_[other];
    }
    std::fprintf(out, "kind %s seats %d wins %d of %d %.1f %% points %.1f\n", names_[seat].c_str(), seats, wins,
                 matches_, Share(wins, matches_), Mean(points, seats * matches_));
  }
}
