// Finds the pairs of colliders that may touch: a quadtree over the x/y plane, built anew at every sub-step, whose
// storage is kept. The order in which pairs are tested is part of the game: it decides the order of contacts.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "core/object_manager.h"
#include "physics/bounds.h"
#include "physics/narrow_phase.h"

namespace GalePhysics {

class BroadPhase {
 public:
  /// Tests every pair of listed colliders that may touch and appends what is found. `objects` span the region.
  void Detect(const ObjectManager::ObjectList& objects, Findings& findings);

 private:
  static constexpr std::size_t kMaxDepth = 4;
  static constexpr std::size_t kSplitAt = 10;  // entries from which on a node is split
  // Of one pass; far beyond any stage.
  static constexpr std::size_t kMaxPairs = 16'000'000;
  static constexpr std::size_t kMaxFindings = 65'536;

  // What is left to look at when the tight boxes of a pair overlap.
  struct Shape {
    float x, y, radius;
    const Collider* collider;
  };
  struct Entry {
    std::uint32_t shape;
    std::uint32_t bits;  // see kMaskBits and kMeetsAll
  };
  // Low bits: quadrants of enclosing nodes that hold the shape and come before this one; the fifth level has none left.
  static constexpr std::uint32_t kMaskBits = 0xffff;
  // MeetsAll of its group: two shapes meet when either has it.
  static constexpr std::uint32_t kMeetsAll = 0x10000;

  struct Quadrant {
    std::vector<Entry> storage;  // grown only; the first `size` are in use
    std::size_t size;
  };
  struct Region {
    float x, y, halfX, halfY;
  };
  struct List {
    Entry* entries;
    std::size_t size;
  };

  void Gather();
  template <class Shapes>
  void GatherFrom(const Shapes& shapes);
  void Visit(const List& list, std::size_t depth, const Region& region, Findings& findings);
  void Distribute(const List& list, std::size_t depth, const Region& region);
  static bool HasPairs(const List& list);
  void TestPairs(const List& list, Findings& findings);
  bool TakeBudget(std::size_t pairs, const Findings& findings);
  void TestPair(std::uint32_t first, std::uint32_t second, Findings& findings) const;

  // By shape number: apart, since the tree reads the first, the pairs the second, and few pairs the third.
  std::vector<Lanes> reaches_;  // circle's (right, -left, upper, -lower) ends
  std::vector<Lanes> bounds_;
  std::vector<Shape> shapes_;
  std::vector<Entry> root_;
  std::array<std::array<Quadrant, 4>, kMaxDepth + 1> quadrants_;  // by depth
  std::size_t pairsWalked_ = 0;                                   // in this pass
  bool reportedPile_ = false;
};

}  // namespace GalePhysics
