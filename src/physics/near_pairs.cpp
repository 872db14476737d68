#include "physics/near_pairs.h"

#include <algorithm>

namespace GalePhysics {

void NearPairs::Collect(const ShapeTable& shapes, std::vector<ShapePair>& touching) {
  if (!Holds(shapes)) Find(shapes);
  const std::vector<Bounds>& bounds = shapes.GetBounds();
  for (const ShapePair& pair : pairs_)
    if (!AreApart(bounds[pair.first], OppositeBounds(bounds[pair.second]))) touching.push_back(pair);
}

bool NearPairs::Holds(const ShapeTable& shapes) const {
  if (wide_.size() != shapes.Size()) return false;
  LaneMask outside = {};
  bool others = false;
  for (std::uint32_t row = 0; row < wide_.size(); ++row) {
    outside |= shapes.GetBounds()[row] < wide_[row];
    others |= shapes.MeetsAllOthers(row) != (meetsAll_[row] != 0);
  }
  return TrueLanes(outside) == 0 && !others;
}

void NearPairs::Find(const ShapeTable& shapes) {
  wide_.clear();
  meetsAll_.clear();
  starts_.clear();
  sorted_.clear();
  pairs_.clear();
  for (std::uint32_t row = 0; row < shapes.Size(); ++row) {
    wide_.push_back(shapes.GetBounds()[row] - kMargin);
    meetsAll_.push_back(shapes.MeetsAllOthers(row));
    starts_.push_back({wide_[row][0], row});
  }
  std::sort(starts_.begin(), starts_.end(), [](const Start& a, const Start& b) { return a.minX < b.minX; });
  for (const Start& start : starts_) sorted_.push_back(wide_[start.row]);
  Sweep(shapes);
  std::sort(pairs_.begin(), pairs_.end());
}

// From left to right: a shape can only touch those that start before it ends.
void NearPairs::Sweep(const ShapeTable& shapes) {
  for (std::size_t i = 0; i < starts_.size(); ++i) {
    const Lanes opposite = OppositeBounds(sorted_[i]);
    for (std::size_t j = i + 1; j < starts_.size() && sorted_[j][0] <= opposite[0]; ++j) {
      if (AreApart(sorted_[j], opposite)) continue;
      const auto [first, second] = std::minmax(starts_[i].row, starts_[j].row);
      if (!shapes.MeetsAllOthers(first) && !shapes.MeetsAllOthers(second)) continue;
      pairs_.push_back({first, second});
      if (IsCutOff()) return;
    }
  }
}

}  // namespace GalePhysics
