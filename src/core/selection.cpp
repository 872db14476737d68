#include "core/selection.h"

#include <algorithm>

#include "core/scene_state.h"

namespace {

struct Selection {
  std::vector<std::uint32_t> ids;
  std::uint32_t last = 0;
  unsigned picks = 0;
};

Selection& Get() {
  static SceneState<Selection> selection;
  return *selection;
}

}  // namespace

void ClearSelection() {
  Get().ids.clear();
  Get().last = 0;
}

void AddToSelection(std::uint32_t objectId) {
  auto& ids = Get().ids;
  if (std::find(ids.begin(), ids.end(), objectId) == ids.end()) ids.push_back(objectId);
  Get().last = objectId;
  ++Get().picks;
}

void SetSelection(const std::vector<std::uint32_t>& objectIds) {
  Get().ids = objectIds;
  Get().last = objectIds.empty() ? 0 : objectIds.back();
}

std::uint32_t GetLastSelected() { return Get().last; }
unsigned CountPicks() { return Get().picks; }

const std::vector<std::uint32_t>& GetSelection() { return Get().ids; }
