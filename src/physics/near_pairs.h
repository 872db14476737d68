// The pairs of shapes that may touch within the next sub-steps: those whose tight bounds, widened by a margin, overlap.
// They are found again only when some shape has left its widened bounds, or the shapes are others; between, a pair
// costs one comparison of its tight bounds a sub-step.
#pragma once

#include <compare>
#include <cstdint>
#include <vector>

#include "physics/shape_table.h"

namespace GalePhysics {

struct ShapePair {
  std::uint32_t first;
  std::uint32_t second;  // above first

  auto operator<=>(const ShapePair&) const = default;
};

class NearPairs {
 public:
  /// Appends the pairs whose tight bounds overlap to `touching`, ordered by the first row, then the second.
  void Collect(const ShapeTable& shapes, std::vector<ShapePair>& touching);
  /// Whether so many shapes lie on one place that some of their pairs are left out.
  bool IsCutOff() const { return pairs_.size() >= kMaxPairs; }

 private:
  static constexpr std::size_t kMaxPairs = 4'000'000;  // far beyond any stage
  // World units. Fast bodies cross it in some 14 sub-steps; a wider one finds less often, but more pairs.
  static constexpr float kMargin = 0.5f;

  struct Start {
    float minX;
    std::uint32_t row;
  };

  bool Holds(const ShapeTable& shapes) const;
  void Find(const ShapeTable& shapes);
  void Sweep(const ShapeTable& shapes);

  std::vector<ShapePair> pairs_;
  // What pairs_ was found for, by row.
  std::vector<Lanes> wide_;
  std::vector<std::uint8_t> meetsAll_;
  // Of Find alone: the rows from left to right, and their widened bounds in that order.
  std::vector<Start> starts_;
  std::vector<Lanes> sorted_;
};

}  // namespace GalePhysics
