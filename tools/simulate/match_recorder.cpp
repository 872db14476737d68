#include "tools/simulate/match_recorder.h"

#include <algorithm>

#include "match/episode/new_game.h"
#include "match/score/point_bubble.h"
#include "match/score/ranking.h"
#include "physics/generator_host.h"

namespace {

constexpr int kNone = -1;  // no index

// The rest of the text behind the words, or nothing.
std::string_view After(std::string_view words, std::string_view text) {
  return text.substr(0, words.size()) == words ? text.substr(words.size()) : std::string_view{};
}

}  // namespace

MatchRecorder::MatchRecorder(RunLogListener* next) : next_(next) {
  SetRunLogListener(this);
  BeginMatch();
}

MatchRecorder::~MatchRecorder() { SetRunLogListener(next_); }

void MatchRecorder::BeginMatch() {
  atPodium_ = begun_ = decided_ = false;
  leader_ = running_ = kNone;
  leadChanges_ = 0;
  awarded_ = GetPointsAwarded();
  for (Objective& objective : objectives_) objective.paid = false;
}

void MatchRecorder::OnEvent(std::string_view text) {
  if (next_ != nullptr) next_->OnEvent(text);
  if (text == "screen game") BeginMatch();
  if (text == "screen podium") atPodium_ = true;
  const std::string_view begun = After("objective begin ", text);
  if (begun.empty() && After("objective end ", text).empty()) return;
  NoteAwards();
  if (seats_ && running_ != kNone) seats_->EndRule(CountPoints());
  running_ = kNone;
  if (begun.empty()) return;
  if (seats_) seats_->BeginRule(begun, CountPoints());
  const auto found =
      std::find_if(objectives_.begin(), objectives_.end(), [&](const Objective& o) { return o.name == begun; });
  running_ = static_cast<int>(found - objectives_.begin());
  if (found == objectives_.end()) objectives_.push_back({std::string(begun), false, 0});
}

void MatchRecorder::NoteAwards() {
  const long long awarded = GetPointsAwarded();
  if (awarded > awarded_ && running_ != kNone) objectives_[static_cast<std::size_t>(running_)].paid = true;
  awarded_ = awarded;
}

// What arrives after the podium was read is not in it, so the standings of the frame before are the final ones.
void MatchRecorder::EndFrame() {
  NoteAwards();
  if (!IsMatchRunning()) {
    decided_ = begun_;
    return;
  }
  begun_ = true;
  decided_ = false;
  ranks_ = RankPlayers();
  NoteLead();
}

void MatchRecorder::NoteLead() {
  if (ranks_[0].points == ranks_[1].points || ranks_[0].player == leader_) return;
  if (leader_ != kNone) ++leadChanges_;
  leader_ = ranks_[0].player;
}

void MatchRecorder::FinishMatch(std::FILE* out, int frames) {
  ++matches_;
  ++wins_[static_cast<std::size_t>(ranks_[0].player)];
  for (Objective& objective : objectives_) objective.matchesPaid += objective.paid ? 1 : 0;
  const int best = ranks_.front().points;
  const int worst = ranks_.back().points;
  spreads_.push_back(best > 0 ? 100.0 * (best - worst) / best : 0.0);
  SeatPoints points{};
  for (const Rank& rank : ranks_) points[static_cast<std::size_t>(rank.player)] = rank.points;
  if (seats_) seats_->FinishMatch(points, ranks_[0].player);
  std::fprintf(out, "match %d %d %d %d %d leads %d frames %d\n", matches_, points[0], points[1], points[2], points[3],
               leadChanges_, frames);
  std::fflush(out);
}

double MatchRecorder::MedianSpread() const {
  if (spreads_.empty()) return 0.0;
  std::vector<double> sorted = spreads_;
  std::sort(sorted.begin(), sorted.end());
  const std::size_t middle = sorted.size() / 2;
  return sorted.size() % 2 != 0 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2.0;
}

void MatchRecorder::PrintTables(std::FILE* out) const {
  for (const Objective& objective : objectives_)
    std::fprintf(out, "paid %s %d\n", objective.name.c_str(), objective.matchesPaid);
  for (int player = 0; player < kPlayers; ++player)
    std::fprintf(out, "wins Player%d %d\n", player + 1, wins_[static_cast<std::size_t>(player)]);
  std::fprintf(out, "spread-median %.1f\n", MedianSpread());
  if (seats_) seats_->Print(out);
  std::fprintf(out, "generators %zu\n", GalePhysics::CountGenerators());
  std::fflush(out);
}

void MatchRecorder::PrintRanking(std::FILE* out) const {
  int place = 1;
  for (const Rank& rank : ranks_) std::fprintf(out, "rank %d Player%d %d\n", place++, rank.player + 1, rank.points);
  std::fflush(out);
}
