// Finds the pairs of colliders that touch and reports them in the order of a quadtree over the x/y plane. That order is
// part of the game: it decides the order of contacts. What the tree orders is only what the exact tests have found.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "core/object_manager.h"
#include "physics/narrow_phase.h"
#include "physics/near_pairs.h"
#include "physics/shape_table.h"

namespace GalePhysics {

/// Which colliders a pass has to look at anew.
enum class Look {
  kAll,     ///< anything may have changed since the last pass
  kMoving,  ///< only bodies that were not at rest at the last pass with kAll have moved since
};

class BroadPhase {
 public:
  /// Tests every pair of listed colliders that may touch and appends what is found. `objects` span the region.
  void Detect(const ObjectManager::ObjectList& objects, Look look, Findings& findings);

 private:
  static constexpr std::size_t kMaxDepth = 4;
  static constexpr std::size_t kSplitAt = 10;          // shapes from which on a quadrant is split
  static constexpr std::size_t kMaxFindings = 65'536;  // of one pass; far beyond any stage

  struct Region {
    float x, y, halfX, halfY;
  };
  using Rows = std::span<const std::uint32_t>;
  // A pair that touches, and where in found_ that stands.
  struct Hit {
    ShapePair pair;
    std::size_t firstContact, endContact;
    std::size_t firstOverlap, endOverlap;
  };
  using Hits = std::vector<Hit>;

  void TestPairs();
  void TestPair(const ShapePair& pair);
  static Region RegionOf(const ObjectManager::ObjectList& objects);
  void Visit(Rows rows, const Hits& hits, std::size_t depth, const Region& region, Findings& findings);
  void Distribute(const Hits& hits, std::size_t depth, const Lanes& centre);
  Rows Select(Rows rows, unsigned quadrant, std::size_t depth, const Lanes& centre);
  std::uint32_t Reached(std::uint32_t row, const Lanes& centre) const;
  void Report(const Hits& hits, Findings& findings);
  void ReportPile();

  ShapeTable shapes_;
  NearPairs nearPairs_;
  // Of one pass; kept for their storage.
  std::vector<ShapePair> near_;
  Findings found_;  // by near_
  Hits hits_;
  std::vector<std::uint32_t> allRows_;
  std::array<std::vector<std::uint32_t>, kMaxDepth> selected_;  // by depth, grown only
  std::array<std::array<Hits, 4>, kMaxDepth + 1> quadrants_;    // by depth
  bool reportedPile_ = false;
};

}  // namespace GalePhysics
