#include "tools/lint/play/stay_watch.h"

#include <algorithm>
#include <cmath>

#include "core/game_time.h"
#include "core/transform.h"
#include "match/player/character_controller.h"
#include "tools/lint/play/piece_cast.h"
#include "tools/lint/play/play_notes.h"

namespace {

constexpr float kCell = 0.5f;  // world units
constexpr float kStageX = 20.0f;
constexpr float kStageY = 12.0f;
constexpr int kColumns = static_cast<int>(2.0f * kStageX / kCell);

int CellOf(const Vec3& place) {
  const float x = std::clamp(place.x + kStageX, 0.0f, 2.0f * kStageX - kCell);
  const float y = std::clamp(place.y + kStageY, 0.0f, 2.0f * kStageY - kCell);
  return static_cast<int>(y / kCell) * kColumns + static_cast<int>(x / kCell);
}

bool IsNear(const Vec3& a, const Vec3& b, float reach) { return std::hypot(a.x - b.x, a.y - b.y) <= reach; }

}  // namespace

void StayWatch::Stay::Restart(const Vec3& place) { *this = {true, place, Time().elapsedTime, 0, {}, {}}; }

int StayWatch::Stay::MostTouched() const {
  const auto most = std::max_element(touches.begin(), touches.end(),
                                     [](const auto& a, const auto& b) { return a.second < b.second; });
  return most == touches.end() ? PieceCast::kNobody : most->first;
}

void StayWatch::Begin(int turn, std::string& text) {
  turn_ = turn;
  text_ = &text;
  left_.clear();
  players_ = {};
}

void StayWatch::End() {
  if (text_ == nullptr) return;
  for (int player = 0; player < kPlayers; ++player) OnMoved(player);
  PlayNote note = {NoteKind::kLeft, turn_, PieceCast::kNobody, {}};
  note.numbers.assign(left_.begin(), left_.end());
  WriteNote(*text_, note);
  text_ = nullptr;
}

void StayWatch::OnMoved(int player) {
  CloseStill(player);
  CloseShut(player, false);
  players_[static_cast<std::size_t>(player)] = {};
}

void StayWatch::OnLaunch(int player) {
  Watched& watched = players_[static_cast<std::size_t>(player)];
  ++watched.still.launches;
  ++watched.shut.launches;
}

void StayWatch::OnTouch(int player, int index) {
  Watched& watched = players_[static_cast<std::size_t>(player)];
  ++watched.still.touches[index];
  ++watched.shut.touches[index];
}

void StayWatch::EndFrame() {
  if (text_ == nullptr) return;
  for (int player = 0; player < kPlayers; ++player) {
    const GameObject* object = GetPlayerObject(player);
    const CharacterController* controller = object == nullptr ? nullptr : FindController(*object);
    if (controller == nullptr) continue;
    if (controller->stunned)
      OnMoved(player);
    else
      Follow(player, object->GetTransform().position);
  }
}

void StayWatch::Follow(int player, const Vec3& place) {
  Watched& watched = players_[static_cast<std::size_t>(player)];
  if (!watched.still.begun || !IsNear(watched.still.from, place, kStillReach)) {
    CloseStill(player);
    watched.still.Restart(place);
  }
  if (!watched.shut.begun || !IsNear(watched.shut.from, place, kShutReach)) {
    CloseShut(player, true);
    watched.shut.Restart(place);
  }
  watched.shut.cells.insert(CellOf(place));
}

void StayWatch::CloseStill(int player) {
  const Stay& stay = players_[static_cast<std::size_t>(player)].still;
  const float seconds = Time().elapsedTime - stay.since;
  if (stay.begun && seconds >= kStillTime && stay.launches >= kStillLaunches)
    Note(NoteKind::kStill, player, stay, seconds);
}

void StayWatch::CloseShut(int player, bool cameAway) {
  const Stay& stay = players_[static_cast<std::size_t>(player)].shut;
  const float seconds = Time().elapsedTime - stay.since;
  if (!stay.begun) return;
  if (cameAway)
    left_.insert(stay.cells.begin(), stay.cells.end());
  else if (seconds >= kShutTime && stay.launches >= kShutLaunches)
    Note(NoteKind::kShutIn, player, stay, seconds);
}

void StayWatch::Note(const char* kind, int player, const Stay& stay, float seconds) {
  PlayNote note = {kind, turn_, stay.MostTouched(), {double(player), seconds, stay.from.x, stay.from.y}};
  note.numbers.insert(note.numbers.end(), stay.cells.begin(), stay.cells.end());
  WriteNote(*text_, note);
}
