#include "tools/simulate/points_check.h"

#include <algorithm>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "match/score/point_bubble.h"
#include "match/score/point_movment.h"
#include "match/score/score_displays.h"
#include "match/score/score_script.h"

namespace {

template <class T>
const T* ScriptOf(const GameObject* object, const char* name) {
  const ScriptBox* scripts = object == nullptr ? nullptr : object->Get<ScriptBox>();
  return scripts == nullptr ? nullptr : static_cast<const T*>(scripts->GetScript(name));
}

const ScoreScript* ScoreOf(std::uint32_t id) {
  const GameObject* display = Objects().GetObject(id);
  return display == nullptr || !display->alive ? nullptr : ScriptOf<ScoreScript>(display, "ScoreScript");
}

}  // namespace

std::string PointsCheck::EndFrame() {
  const bool count = HaveDisplays();
  if (!count) FindDisplays();
  if (!HaveDisplays()) return {};
  const long long shown = CountShown();
  const long long underWay = CountUnderWay();
  if (!count) before_ = GetPointsAwarded() - shown - underWay;
  const long long awarded = GetPointsAwarded() - before_;
  if (awarded == shown + underWay) return {};
  return std::to_string(awarded) + " points were awarded, but the displays show " + std::to_string(shown) + " and " +
         std::to_string(underWay) + " are under way";
}

bool PointsCheck::HaveDisplays() const {
  return std::all_of(displays_.begin(), displays_.end(), [](std::uint32_t id) { return ScoreOf(id) != nullptr; });
}

// By name once, then by ID, as bubbles find them: the editor may rename one. A display of a level's own has no puller,
// and its points go nowhere.
void PointsCheck::FindDisplays() {
  for (std::size_t player = 0; player < displays_.size(); ++player) {
    const bool pulls = GetPlayerPuller(static_cast<int>(player)) != nullptr;
    const GameObject* display = pulls ? Objects().FindObjectByName(kScoreObjects[player]) : nullptr;
    displays_[player] = display == nullptr ? 0 : display->id;
  }
}

long long PointsCheck::CountShown() const {
  long long points = 0;
  for (const std::uint32_t id : displays_) points += ScoreOf(id)->GetPoints();
  return points;
}

// A dead bubble counts: it is credited when the next frame sweeps it.
long long PointsCheck::CountUnderWay() const {
  long long points = 0;
  for (const auto& object : Objects().GetObjects()) {
    const auto* bubble = ScriptOf<PointMovment>(object.get(), "pointmovment");
    if (bubble == nullptr) continue;
    const auto target = std::find(displays_.begin(), displays_.end(), bubble->GetCreditTarget());
    if (target != displays_.end()) points += bubble->GetValue();
  }
  return points;
}
