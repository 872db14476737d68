#include "core/pause.h"

#include <algorithm>
#include <string>
#include <vector>

#include "core/run_log.h"
#include "core/scene_state.h"

namespace {

std::vector<std::string>& Reasons() {
  static SceneState<std::vector<std::string>> reasons;
  return *reasons;
}

void LogChange(bool before) {
  if (before != IsPaused()) LogEvent(IsPaused() ? "pause on" : "pause off");
}

}  // namespace

bool IsPaused() { return !Reasons().empty(); }

bool IsFrozen() { return std::find(Reasons().begin(), Reasons().end(), kFrozenReason) != Reasons().end(); }

bool IsPausedByGame() {
  return std::any_of(Reasons().begin(), Reasons().end(), [](const auto& held) { return held != kFrozenReason; });
}

void RequestPause(std::string_view reason) {
  const bool before = IsPaused();
  Reasons().emplace_back(reason);
  LogChange(before);
}

void ReleasePause(std::string_view reason) {
  const bool before = IsPaused();
  auto& reasons = Reasons();
  const auto found = std::find(reasons.begin(), reasons.end(), reason);
  if (found != reasons.end()) reasons.erase(found);
  LogChange(before);
}

void ReleasePauseWholly(std::string_view reason) {
  const bool before = IsPaused();
  std::erase(Reasons(), reason);
  LogChange(before);
}

void ClearPauseReasons() { Reasons().clear(); }
