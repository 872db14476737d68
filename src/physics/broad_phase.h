// Finds the pairs of colliders that may touch: a quadtree over the x/y plane, built anew at every sub-step, whose
// storage is kept. The order in which pairs are tested is part of the game: it decides the order of contacts.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "core/object_manager.h"
#include "physics/narrow_phase.h"

namespace GalePhysics {

class BroadPhase {
 public:
  /// Tests every pair of listed colliders that may touch and appends what is found. `objects` span the region.
  void Detect(const ObjectManager::ObjectList& objects, Findings& findings);

 private:
  static constexpr int kMaxDepth = 4;
  static constexpr std::size_t kSplitAt = 10;  // entries from which on a node is split

  // What the filters need of a collider, side by side.
  struct Shape {
    float minX, minY, maxX, maxY;  // tight box with a margin, see PlaceBounds
    float x, y, radius;            // bounding circle around the owner's position
    std::uint32_t group;
    const Collider* collider;
  };
  struct Entry {
    std::uint32_t shape;
    std::uint32_t mask;  // quadrants of enclosing nodes that hold the shape and come before this one
  };
  struct Quadrant {
    std::vector<Entry> entries;
    std::uint32_t commonMask;  // bits that all entries share
    std::uint32_t groups;      // all entries' groups, or-ed
    void Clear();
    void Add(const Entry& entry, std::uint32_t group);
    bool HasPairs() const { return entries.size() > 1 && commonMask == 0 && groups != 0; }
  };
  struct Region {
    float x, y, halfX, halfY;
  };

  void Gather();
  template <class Shapes>
  void GatherFrom(const Shapes& shapes);
  void Visit(std::vector<Entry>& entries, int depth, const Region& region, Findings& findings);
  void Distribute(std::vector<Entry>& entries, int depth, const Region& region);
  void TestPairs(const std::vector<Entry>& entries, Findings& findings) const;

  std::vector<Shape> shapes_;
  std::vector<Entry> root_;
  std::array<std::array<Quadrant, 4>, kMaxDepth + 1> quadrants_;  // by depth
};

}  // namespace GalePhysics
