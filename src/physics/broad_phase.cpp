#include "physics/broad_phase.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/transform.h"
#include "physics/bounds.h"
#include "physics/primitive_assemblage.h"

namespace GalePhysics {

namespace {

constexpr std::uint32_t kMaskBits = 0xffff;  // the quadrants of the fifth level have no bits left

}  // namespace

void BroadPhase::Quadrant::Clear() {
  entries.clear();
  commonMask = kMaskBits;
  groups = 0;
}

void BroadPhase::Quadrant::Add(const Entry& entry, std::uint32_t group) {
  entries.push_back(entry);
  commonMask &= entry.mask;
  groups |= group;
}

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
  Visit(root_, 0, {(maxX + minX) / 2.0f, (maxY + minY) / 2.0f, (maxX - minX) / 2.0f, (maxY - minY) / 2.0f}, findings);
}

void BroadPhase::Gather() {
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
    const Bounds bounds = TightBounds(*shape);
    root_.push_back({static_cast<std::uint32_t>(shapes_.size()), 0});
    shapes_.push_back({bounds.minX, bounds.minY, bounds.maxX, bounds.maxY, p.x, p.y, shape->broadPhaseSize,
                       shape->collisionGroup, shape});
  }
}

// A copy carries the bits of the quadrants that come before it: two copies that share a bit are tested there.
void BroadPhase::Distribute(std::vector<Entry>& entries, int depth, const Region& region) {
  auto& quadrants = quadrants_[static_cast<std::size_t>(depth)];
  for (Quadrant& quadrant : quadrants) quadrant.Clear();
  for (Entry& entry : entries) {
    const Shape& shape = shapes_[entry.shape];
    const bool right = shape.x + shape.radius >= region.x;
    const bool left = shape.x - shape.radius <= region.x;
    const bool upper = shape.y + shape.radius >= region.y;
    const bool lower = shape.y - shape.radius <= region.y;
    const std::array<bool, 4> reached = {right && upper, right && lower, left && upper, left && lower};
    for (std::size_t q = 0; q < 4; ++q) {
      if (!reached[q]) continue;
      quadrants[q].Add(entry, shape.group);
      entry.mask |= (1u << (4 * static_cast<std::size_t>(depth) + q)) & kMaskBits;
    }
  }
}

void BroadPhase::Visit(std::vector<Entry>& entries, int depth, const Region& region, Findings& findings) {
  Distribute(entries, depth, region);
  const float halfX = region.halfX / 2.0f;
  const float halfY = region.halfY / 2.0f;
  for (std::size_t q = 0; q < 4; ++q) {
    Quadrant& quadrant = quadrants_[static_cast<std::size_t>(depth)][q];
    if (!quadrant.HasPairs()) continue;
    if (quadrant.entries.size() >= kSplitAt && depth < kMaxDepth) {
      const Region inner = {q < 2 ? region.x + halfX : region.x - halfX,
                            q % 2 == 0 ? region.y + halfY : region.y - halfY, halfX, halfY};
      Visit(quadrant.entries, depth + 1, inner, findings);
    } else {
      TestPairs(quadrant.entries, findings);
    }
  }
}

void BroadPhase::TestPairs(const std::vector<Entry>& entries, Findings& findings) const {
  for (std::size_t i = 0; i + 1 < entries.size(); ++i) {
    const Shape& a = shapes_[entries[i].shape];
    for (std::size_t j = i + 1; j < entries.size(); ++j) {
      const Shape& b = shapes_[entries[j].shape];
      // Tight boxes first: a wall's circle spans the arena, so most pairs that the circles let through cannot touch.
      if (a.minX > b.maxX || b.minX > a.maxX || a.minY > b.maxY || b.minY > a.maxY) continue;
      if ((entries[i].mask & entries[j].mask) != 0 || !GroupsMeet(a.group, b.group)) continue;
      const float reach = a.radius + b.radius;
      if (std::abs(a.x - b.x) <= reach && std::abs(a.y - b.y) <= reach) Collide(*a.collider, *b.collider, findings);
    }
  }
}

}  // namespace GalePhysics
