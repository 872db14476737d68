#include "physics/broad_phase.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>

#include "core/print.h"
#include "core/transform.h"

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

void BroadPhase::Detect(const ObjectManager::ObjectList& objects, Look look, Findings& findings) {
  if (look == Look::kAll)
    shapes_.Renew();
  else
    shapes_.Follow();
  TestPairs();
  if (hits_.empty()) return;
  allRows_.resize(shapes_.Size());
  std::iota(allRows_.begin(), allRows_.end(), 0u);
  Visit(allRows_, hits_, 0, RegionOf(objects), findings);
}

void BroadPhase::TestPairs() {
  near_.clear();
  found_.contacts.clear();
  found_.overlaps.clear();
  hits_.clear();
  nearPairs_.Collect(shapes_, near_);
  if (nearPairs_.IsCutOff()) ReportPile();
  for (const ShapePair& pair : near_) {
    if (found_.Size() >= kMaxFindings) return ReportPile();
    TestPair(pair);
  }
}

void BroadPhase::TestPair(const ShapePair& pair) {
  const ShapeTable::Circle& a = shapes_.GetCircle(pair.first);
  const ShapeTable::Circle& b = shapes_.GetCircle(pair.second);
  const float reach = a.radius + b.radius;
  if (!(std::abs(a.x - b.x) <= reach && std::abs(a.y - b.y) <= reach)) return;
  Hit hit = {pair, found_.contacts.size(), 0, found_.overlaps.size(), 0};
  Collide(shapes_.GetCollider(pair.first), shapes_.GetCollider(pair.second), found_);
  hit.endContact = found_.contacts.size();
  hit.endOverlap = found_.overlaps.size();
  if (hit.endContact > hit.firstContact || hit.endOverlap > hit.firstOverlap) hits_.push_back(hit);
}

BroadPhase::Region BroadPhase::RegionOf(const ObjectManager::ObjectList& objects) {
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
  // Halved before they are added: a place near the largest float must not make the region infinite.
  return {maxX / 2.0f + minX / 2.0f, maxY / 2.0f + minY / 2.0f, maxX / 2.0f - minX / 2.0f, maxY / 2.0f - minY / 2.0f};
}

// A quadrant holds the shapes whose circles reach it, and is split by their number. Only those with hits are gone into.
void BroadPhase::Visit(Rows rows, const Hits& hits, std::size_t depth, const Region& region, Findings& findings) {
  const Lanes centre = {region.x, -region.x, region.y, -region.y};
  Distribute(hits, depth, centre);
  const float halfX = region.halfX / 2.0f;
  const float halfY = region.halfY / 2.0f;
  for (unsigned q = 0; q < 4; ++q) {
    const Hits& inner = quadrants_[depth][q];
    if (inner.empty()) continue;
    if (depth < kMaxDepth) {
      const Rows selected = Select(rows, q, depth, centre);
      if (selected.size() >= kSplitAt) {
        const float x = q < 2 ? region.x + halfX : region.x - halfX;
        const float y = q % 2 == 0 ? region.y + halfY : region.y - halfY;
        Visit(selected, inner, depth + 1, {x, y, halfX, halfY}, findings);
        continue;
      }
    }
    Report(inner, findings);
  }
}

// A pair belongs to the first quadrant that both shapes reach. On the last level it belongs to all of them, and is
// reported as often.
void BroadPhase::Distribute(const Hits& hits, std::size_t depth, const Lanes& centre) {
  auto& quadrants = quadrants_[depth];
  for (Hits& quadrant : quadrants) quadrant.clear();
  for (const Hit& hit : hits) {
    std::uint32_t common = Reached(hit.pair.first, centre) & Reached(hit.pair.second, centre);
    while (common != 0) {
      quadrants[static_cast<std::size_t>(std::countr_zero(common))].push_back(hit);
      common = depth < kMaxDepth ? 0 : common & (common - 1);
    }
  }
}

BroadPhase::Rows BroadPhase::Select(Rows rows, unsigned quadrant, std::size_t depth, const Lanes& centre) {
  std::vector<std::uint32_t>& storage = selected_[depth];
  if (storage.size() < rows.size()) storage.resize(2 * rows.size());
  std::size_t size = 0;
  for (const std::uint32_t row : rows) {
    storage[size] = row;  // stays if it counts, which spares the unforeseeable branch
    size += (Reached(row, centre) >> quadrant) & 1u;
  }
  return {storage.data(), size};
}

std::uint32_t BroadPhase::Reached(std::uint32_t row, const Lanes& centre) const {
  return kReached[TrueLanes(shapes_.GetReach(row) >= centre)];
}

void BroadPhase::Report(const Hits& hits, Findings& findings) {
  const auto at = [](auto& list, std::size_t i) { return list.begin() + static_cast<std::ptrdiff_t>(i); };
  for (const Hit& hit : hits) {
    if (findings.Size() >= kMaxFindings) return ReportPile();
    findings.contacts.insert(findings.contacts.end(), at(found_.contacts, hit.firstContact),
                             at(found_.contacts, hit.endContact));
    findings.overlaps.insert(findings.overlaps.end(), at(found_.overlaps, hit.firstOverlap),
                             at(found_.overlaps, hit.endOverlap));
  }
}

// Bodies piled on one place meet each other all: their pairs grow with the square of their number.
void BroadPhase::ReportPile() {
  if (!reportedPile_) Print("too many colliders on one place, the rest of their contacts is skipped\n");
  reportedPile_ = true;
}

}  // namespace GalePhysics
