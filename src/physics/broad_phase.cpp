#include "physics/broad_phase.h"

#include <algorithm>
#include <cmath>

#include "core/print.h"
#include "core/transform.h"
#include "physics/primitive_assemblage.h"

namespace GalePhysics {

namespace {

// Quadrants (bit q: right upper, right lower, left upper, left lower) by the sides of the centre that a circle reaches
// (bit 0 right, 1 left, 2 upper, 3 lower).
constexpr std::array<std::uint32_t, 16> kReached = [] {
  std::array<std::uint32_t, 16> reached{};
  for (std::uint32_t sides = 0; sides < 16; ++sides) {
    const std::uint32_t right = sides & 1;
    const std::uint32_t left = (sides >> 1) & 1;
    const std::uint32_t upper = (sides >> 2) & 1;
    const std::uint32_t lower = (sides >> 3) & 1;
    reached[sides] = (right & upper) | (right & lower) << 1 | (left & upper) << 2 | (left & lower) << 3;
  }
  return reached;
}();

}  // namespace

void BroadPhase::Detect(const ObjectManager::ObjectList& objects, Findings& findings) {
  float maxX = 0.0f;
  float maxY = 0.0f;
  float minX = 0.0f;
  float minY = 0.0f;
  for (const auto& object : objects) {
    const Vec3& p = object->GetTransform().position;
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) continue;
    maxX = std::max(maxX, p.x);
    maxY = std::max(maxY, p.y);
    minX = std::min(minX, p.x);
    minY = std::min(minY, p.y);
  }
  Gather();
  pairsWalked_ = 0;
  // Halved before they are added: a place near the largest float must not make the region infinite.
  const Region region = {maxX / 2.0f + minX / 2.0f, maxY / 2.0f + minY / 2.0f, maxX / 2.0f - minX / 2.0f,
                         maxY / 2.0f - minY / 2.0f};
  Visit({root_.data(), root_.size()}, 0, region, findings);
}

void BroadPhase::Gather() {
  reaches_.clear();
  bounds_.clear();
  shapes_.clear();
  root_.clear();
  GatherFrom(ShapeListing<BoxCollider>::List());
  GatherFrom(ShapeListing<SphereCollider>::List());
  GatherFrom(ShapeListing<PrimitiveAssemblage>::List());
}

template <class Shapes>
void BroadPhase::GatherFrom(const Shapes& shapes) {
  for (const auto* shape : shapes) {
    if (shape->owner == nullptr) continue;
    const Vec3& p = shape->owner->GetTransform().position;
    const float r = shape->broadPhaseSize;
    root_.push_back({static_cast<std::uint32_t>(shapes_.size()), MeetsAll(shape->collisionGroup) ? kMeetsAll : 0});
    reaches_.push_back(Lanes{p.x + r, -(p.x - r), p.y + r, -(p.y - r)});
    bounds_.push_back(ToLanes(TightBounds(*shape)));
    shapes_.push_back({p.x, p.y, r, shape});
  }
}

// A copy carries the bits of the quadrants that come before it: two copies that share a bit are tested there. Every
// entry is written to all four quadrants and kept in those that it reaches, which spares the unforeseeable branches.
void BroadPhase::Distribute(const List& list, std::size_t depth, const Region& region) {
  const Lanes centre = {region.x, -region.x, region.y, -region.y};
  std::array<Entry*, 4> out;
  auto& quadrants = quadrants_[depth];
  for (std::size_t q = 0; q < 4; ++q) {
    if (quadrants[q].storage.size() <= list.size) quadrants[q].storage.resize(2 * list.size + 1);
    out[q] = quadrants[q].storage.data();
  }
  for (std::size_t i = 0; i < list.size; ++i) {
    const Entry entry = list.entries[i];
    const std::uint32_t reached = kReached[TrueLanes(reaches_[entry.shape] >= centre)];
    for (std::uint32_t q = 0; q < 4; ++q) {
      const std::uint32_t before = reached & ((1u << q) - 1);
      *out[q] = {entry.shape, entry.bits | ((before << (4 * depth)) & kMaskBits)};
      out[q] += (reached >> q) & 1u;
    }
  }
  for (std::size_t q = 0; q < 4; ++q)
    quadrants[q].size = static_cast<std::size_t>(out[q] - quadrants[q].storage.data());
}

void BroadPhase::Visit(const List& list, std::size_t depth, const Region& region, Findings& findings) {
  Distribute(list, depth, region);
  const float halfX = region.halfX / 2.0f;
  const float halfY = region.halfY / 2.0f;
  for (std::size_t q = 0; q < 4; ++q) {
    Quadrant& quadrant = quadrants_[depth][q];
    const List inner = {quadrant.storage.data(), quadrant.size};
    if (!HasPairs(inner)) continue;
    if (inner.size >= kSplitAt && depth < kMaxDepth) {
      const float x = q < 2 ? region.x + halfX : region.x - halfX;
      const float y = q % 2 == 0 ? region.y + halfY : region.y - halfY;
      Visit(inner, depth + 1, {x, y, halfX, halfY}, findings);
    } else {
      TestPairs(inner, findings);
    }
  }
}

// Entries that all share a bit are tested elsewhere, and those of group 0 alone nowhere.
bool BroadPhase::HasPairs(const List& list) {
  std::uint32_t common = kMaskBits;
  std::uint32_t any = 0;
  for (std::size_t i = 0; i < list.size; ++i) {
    common &= list.entries[i].bits;
    any |= list.entries[i].bits;
  }
  return list.size > 1 && common == 0 && (any & kMeetsAll) != 0;
}

// Tight boxes first: a wall's circle spans the arena, so most pairs that the circles let through cannot touch.
void BroadPhase::TestPairs(const List& list, Findings& findings) {
  for (std::size_t i = 0; i + 1 < list.size; ++i) {
    if (!TakeBudget(list.size - i - 1, findings)) return;
    const Entry a = list.entries[i];
    const Lanes upper = OppositeBounds(bounds_[a.shape]);
    for (std::size_t j = i + 1; j < list.size; ++j) {
      const Entry b = list.entries[j];
      if (AreApart(bounds_[b.shape], upper)) continue;
      if ((a.bits & b.bits & kMaskBits) != 0 || ((a.bits | b.bits) & kMeetsAll) == 0) continue;
      TestPair(a.shape, b.shape, findings);
    }
  }
}

// Bodies piled on one place meet each other all: their pairs grow with the square of their number.
bool BroadPhase::TakeBudget(std::size_t pairs, const Findings& findings) {
  pairsWalked_ += pairs;
  if (pairsWalked_ <= kMaxPairs && findings.Size() < kMaxFindings) return true;
  if (!reportedPile_) Print("too many colliders on one place, the rest of their contacts is skipped\n");
  reportedPile_ = true;
  return false;
}

void BroadPhase::TestPair(std::uint32_t first, std::uint32_t second, Findings& findings) const {
  const Shape& a = shapes_[first];
  const Shape& b = shapes_[second];
  const float reach = a.radius + b.radius;
  if (std::abs(a.x - b.x) <= reach && std::abs(a.y - b.y) <= reach) Collide(*a.collider, *b.collider, findings);
}

}  // namespace GalePhysics
