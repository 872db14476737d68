#include "physics/box_box.h"

#include <array>
#include <cmath>

namespace GalePhysics {

namespace {

// A depth nearer to 0 than this is taken for the touching faces of two boxes of one size, not for a penetration.
constexpr float kTouching = 1e-5f;
constexpr std::size_t kCorners = 8;

enum class Axis { kNone, kX, kY, kZ };

struct Depth {
  Axis axis = Axis::kNone;
  float depth = 0.0f;
};

struct Candidate {
  Vec3 point;  // in the penetrated box's frame
  Depth depth;
};

struct Candidates {
  std::array<Candidate, 2 * kCorners> list;
  std::size_t size = 0;
  std::size_t ofFirst = 0;  // the leading ones are corners of A inside B
};

bool AnyEqualExtent(const Vec3& a, const Vec3& b) {
  const auto among = [&](float extent) { return extent != 0.0f && (extent == b.x || extent == b.y || extent == b.z); };
  return among(a.x) || among(a.y) || among(a.z);
}

Depth NearestFace(const Vec3& p, const Vec3& half) {
  Depth nearest = {Axis::kX, half.x - std::abs(p.x)};
  if (const float dy = half.y - std::abs(p.y); dy < nearest.depth) nearest = {Axis::kY, dy};
  if (const float dz = half.z - std::abs(p.z); half.z != 0.0f && dz < nearest.depth) nearest = {Axis::kZ, dz};
  return nearest;
}

// Boxes of one size that stand face to face would make every touching corner a hit: faces at depth 0 do not count.
Depth NearestFaceOfEqualSizes(const Vec3& p, const Vec3& half) {
  Depth nearest;
  const auto consider = [&](Axis axis, float depth, bool first) {
    if (std::abs(depth) > kTouching && (first || depth < nearest.depth)) nearest = {axis, depth};
  };
  consider(Axis::kX, half.x - std::abs(p.x), true);
  consider(Axis::kY, half.y - std::abs(p.y), false);
  consider(Axis::kZ, half.z - std::abs(p.z), false);
  return nearest;
}

Depth FaceDepth(const Vec3& p, const Vec3& half, bool equalSizes) {
  return equalSizes ? NearestFaceOfEqualSizes(p, half) : NearestFace(p, half);
}

void CollectCorners(const Vec3& halfOwner, const Matrix34& owner, const Vec3& half, const Matrix34& box,
                    bool equalSizes, Candidates& found) {
  Matrix33 toBox;
  Invert(box.rotation, toBox);
  for (std::size_t corner = 0; corner < kCorners; ++corner) {
    const Vec3 local = {(corner & 4) != 0 ? -halfOwner.x : halfOwner.x, (corner & 2) != 0 ? -halfOwner.y : halfOwner.y,
                        (corner & 1) != 0 ? -halfOwner.z : halfOwner.z};
    const Vec3 p = toBox * (owner.rotation * local + owner.translation - box.translation);
    const Depth depth = FaceDepth(p, half, equalSizes);
    if (depth.depth > 0.0f) found.list[found.size++] = {p, depth};
  }
}

std::size_t DeepestOf(const Candidates& found) {
  std::size_t deepest = 0;
  for (std::size_t i = 1; i < found.size; ++i)
    if (found.list[i].depth.depth > found.list[deepest].depth.depth) deepest = i;
  return deepest;
}

Vec3 FaceNormal(const Candidate& hit) {
  switch (hit.depth.axis) {
    case Axis::kX:
      return {hit.point.x > 0.0f ? 1.0f : -1.0f, 0.0f, 0.0f};
    case Axis::kY:
      return {0.0f, hit.point.y > 0.0f ? 1.0f : -1.0f, 0.0f};
    case Axis::kZ:
      return {0.0f, 0.0f, hit.point.z > 0.0f ? 1.0f : -1.0f};
    case Axis::kNone:
      break;
  }
  return {};
}

}  // namespace

std::optional<BoxHit> TestBoxes(const Vec3& halfA, const Matrix34& a, const Vec3& halfB, const Matrix34& b) {
  const bool equalSizes = AnyEqualExtent(halfA, halfB);
  Candidates found;
  CollectCorners(halfA, a, halfB, b, equalSizes, found);
  found.ofFirst = found.size;
  CollectCorners(halfB, b, halfA, a, equalSizes, found);
  if (found.size == 0) return std::nullopt;

  const std::size_t deepest = DeepestOf(found);
  const bool secondPenetrated = deepest < found.ofFirst;
  const std::size_t from = secondPenetrated ? 0 : found.ofFirst;
  const std::size_t to = secondPenetrated ? found.ofFirst : found.size;
  Candidate hit = found.list[deepest];
  if (to - from >= 2) {
    Vec3 sum;
    for (std::size_t i = from; i < to; ++i) sum += found.list[i].point;
    hit.point = sum * (1.0f / static_cast<float>(to - from));
    hit.depth = FaceDepth(hit.point, secondPenetrated ? halfB : halfA, equalSizes);
  }
  const Matrix34& penetrated = secondPenetrated ? b : a;
  const Vec3 normal = Normalised(-(penetrated.rotation * FaceNormal(hit)));
  return BoxHit{secondPenetrated, normal, penetrated * hit.point, hit.depth.depth};
}

}  // namespace GalePhysics
