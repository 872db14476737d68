#include "tools/simulate/place_tables.h"

#include <algorithm>
#include <cmath>

#include "core/object_manager.h"
#include "core/player_name.h"
#include "core/script_box.h"
#include "core/transform.h"

namespace {

constexpr float kLeft = -16.0f;  // world units
constexpr float kBottom = -11.0f;
constexpr std::string_view kBegin = "segment begin ";
constexpr std::string_view kStun = "stun ";

int CellOf(const Vec3& place) {
  const int column = static_cast<int>(std::floor((place.x - kLeft) / PlaceTables::kCell));
  const int row = static_cast<int>(std::floor((place.y - kBottom) / PlaceTables::kCell));
  return std::clamp(row, 0, PlaceTables::kRows - 1) * PlaceTables::kColumns +
         std::clamp(column, 0, PlaceTables::kColumns - 1);
}

}  // namespace

void PlaceTables::OnEvent(std::string_view text) {
  if (next_ != nullptr) next_->OnEvent(text);
  if (text.starts_with(kBegin)) {
    const std::string_view name = text.substr(kBegin.size());
    const auto found = std::find_if(pieces_.begin(), pieces_.end(), [&](const Piece& p) { return p.name == name; });
    running_ = static_cast<std::size_t>(found - pieces_.begin());
    if (found == pieces_.end()) pieces_.push_back({std::string(name), 0, {}});
    playing_ = true;
  } else if (text.starts_with("screen ")) {
    playing_ = false;
  } else if (playing_ && text.starts_with(kStun)) {
    const int player = PlayerIndexFromName(text.substr(kStun.size()));
    const GameObject* object = IsPlayerIndex(player) ? GetPlayerObject(player) : nullptr;
    if (object != nullptr)
      pieces_[running_].seats[static_cast<std::size_t>(player)].stuns.push_back(object->GetTransform().position);
  }
}

void PlaceTables::EndFrame(int frame) {
  FollowBubbles(frame);
  if (!playing_) return;
  ++pieces_[running_].frames;
  if (frame % kEvery != 0) return;
  for (int player = 0; player < kPlayers; ++player)
    if (const GameObject* object = GetPlayerObject(player))
      ++pieces_[running_].seats[static_cast<std::size_t>(player)].looks[CellOf(object->GetTransform().position)];
}

void PlaceTables::FollowBubbles(int frame) {
  for (const auto& object : Objects().GetObjects()) {
    if (bubbles_.contains(object->id) || !otherThings_.insert(object->id).second) continue;
    const ScriptBox* scripts = object->Get<ScriptBox>();
    if (scripts != nullptr && scripts->GetScript("pointmovment") != nullptr) bubbles_.emplace(object->id, frame);
  }
  std::erase_if(bubbles_, [&](const auto& bubble) {
    if (Objects().GetObject(bubble.first) != nullptr) return false;
    ++flights_[(frame - bubble.second) / kFlightBin];
    return true;
  });
}

void PlaceTables::Print(std::FILE* out) const {
  for (const Piece& piece : pieces_) {
    std::fprintf(out, "piece %s frames %d\n", piece.name.c_str(), piece.frames);
    for (int player = 0; player < kPlayers; ++player) PrintSeat(out, piece, player);
  }
  std::fputs("flights", out);
  for (const auto& [bin, count] : flights_) std::fprintf(out, " %d %d", bin, count);
  std::fputc('\n', out);
  std::fflush(out);
}

void PlaceTables::PrintSeat(std::FILE* out, const Piece& piece, int player) const {
  const Seat& seat = piece.seats[static_cast<std::size_t>(player)];
  std::fprintf(out, "places %s Player%d", piece.name.c_str(), player + 1);
  for (const auto& [cell, looks] : seat.looks) std::fprintf(out, " %d %d", cell, looks);
  std::fprintf(out, "\nstuns %s Player%d", piece.name.c_str(), player + 1);
  for (const Vec3& place : seat.stuns)
    std::fprintf(out, " %.1f %.1f", static_cast<double>(place.x), static_cast<double>(place.y));
  std::fputc('\n', out);
}
