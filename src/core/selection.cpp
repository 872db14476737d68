#include "core/selection.h"

#include <algorithm>

namespace {
std::vector<std::uint32_t>& Selected() {
  static std::vector<std::uint32_t> selected;
  return selected;
}
}  // namespace

void ClearSelection() { Selected().clear(); }

void AddToSelection(std::uint32_t objectId) {
  auto& selected = Selected();
  if (std::find(selected.begin(), selected.end(), objectId) == selected.end()) selected.push_back(objectId);
}

const std::vector<std::uint32_t>& GetSelection() { return Selected(); }
